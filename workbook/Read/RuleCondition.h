#pragma once

#include <string>
#include <string_view>
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

/// The formula of the text that a text rule looks for, such as `$C$14`; empty for a text that is
/// written out, and for rules of other kinds.
[[nodiscard]] std::string findNeedleFormula(pugi::xml_node rule,
                                            std::vector<std::string> const& formulas);

/// True for the types of rules that draw on cells and contribute no style: colour scales, data bars
/// and sets of icons.
[[nodiscard]] bool isVisual(std::string_view type) noexcept;

}  // namespace Zorv::Workbook
