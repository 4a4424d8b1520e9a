#pragma once

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/Values/Value.h"

/// The operators between single values.
namespace Zorv::Formulas {

class Evaluator;

/// Requires an operator other than those between references, and single values; counts the steps of
/// reading texts. An error on either side is the result, the left one first.
[[nodiscard]] Value applyBinary(DOM::FormulaSyntaxTree::Operator op, Value const& left,
                                Value const& right, Evaluator& evaluator);

/// Negation or percentage of a single value.
[[nodiscard]] Value applyUnary(DOM::FormulaSyntaxTree::Operator op, Value const& argument,
                               Evaluator& evaluator);

}  // namespace Zorv::Formulas
