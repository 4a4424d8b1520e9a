#pragma once

#include <string>
#include <vector>

#include <pugixml.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "Utils/Exceptions.h"

namespace Zorv::Workbook {

/// A rule whose condition none of the seven kinds of condition can express, or that is damaged;
/// what() is the reason in words.
class UnresolvedRule : public BaseRuntimeError {
public:
  using BaseRuntimeError::BaseRuntimeError;
};

/// The condition of a `cfRule` element (ISO/IEC 29500-1, 18.3.1.10, and its later form) with the
/// formulas that stand in it.
/// Throws UnresolvedRule.
[[nodiscard]] DOM::ConditionalFormatOperator readCondition(
    pugi::xml_node rule, std::vector<std::string> const& formulas);

}  // namespace Zorv::Workbook
