#pragma once

#include <optional>
#include <string>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/ContextProvider.h"

namespace Zorv::Analysis {

/// The value of a formula that is the same whatever any cell holds, such as `2*3` or `"yes"`;
/// nothing for any other formula, and for one that cannot be evaluated.
[[nodiscard]] std::optional<FormulaValue> evaluateConstant(
    DOM::FormulaSyntaxTree::Expr const& expr, Formulas::ContextProvider const& provider,
    DOM::Table const& table);

/// The value of a node that is a constant, or a negative number; nothing for any other node.
[[nodiscard]] std::optional<FormulaValue> asConstant(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                                     DOM::FormulaSyntaxTree::Node const& node);

/// The number of a value. Requires a number.
[[nodiscard]] double numberOf(FormulaValue const& value);

/// A value as a formula writes it: `5`, `"yes"`, `TRUE`, `#N/A`; long texts are cut.
[[nodiscard]] std::string toFormulaText(FormulaValue const& value);

}  // namespace Zorv::Analysis
