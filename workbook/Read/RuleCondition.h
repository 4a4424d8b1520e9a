#pragma once

#include <string>
#include <vector>

#include <pugixml.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Utils/Exceptions.h"

namespace Zorv::Workbook {

/// A rule that is damaged, or of a kind that is not known; what() is the reason.
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

/// Parses a formula of a rule. Throws UnresolvedRule.
[[nodiscard]] DOM::FormulaSyntaxTree::Expr parseRuleFormula(std::string const& formula);

}  // namespace Zorv::Workbook
