#pragma once

#include <string>
#include <vector>

#include <pugixml.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "Utils/Exceptions.h"

namespace Zorv::Workbook {

/// A rule that is damaged, or whose condition is none of the seven kinds; what() is the reason.
class UnresolvedRule : public BaseRuntimeError {
public:
  using BaseRuntimeError::BaseRuntimeError;
};

/// Reads the condition of a `cfRule` element (ISO/IEC 29500-1, 18.3.1.10, and its later form) with
/// its formulas. Throws UnresolvedRule.
[[nodiscard]] DOM::ConditionalFormatOperator readCondition(
    pugi::xml_node rule, std::vector<std::string> const& formulas);

}  // namespace Zorv::Workbook
