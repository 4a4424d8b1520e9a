#pragma once

#include <cstdint>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/PositionDependence.h"
#include "Formulas/Values/FunctionTable.h"

namespace Zorv::Formulas {

/// Traits of a formula, found without evaluating it. In doubt a trait is set.
[[nodiscard]] DOM::FormulaSyntaxTree::ExprTraits analyse(
    DOM::FormulaSyntaxTree::ExprParts const& parts, FunctionTable const& functions);

/// See findPositionDependence().
[[nodiscard]] PositionDependence analysePosition(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                                 FunctionTable const& functions);

/// A function call within a formula.
struct InnerCall {
  std::uint32_t node = 0;
  bool isByElement = false;  ///< it is evaluated element by element
};

/// The calls that read ranges or have calls inside, such as `SUM(SEQUENCE(9))`, and have the same
/// value for every cell: without relative references, volatile functions, defined names, names of
/// LET, or anything that depends on the formula's own position. Of nested calls the outermost only.
/// In doubt a call is left out.
[[nodiscard]] std::vector<InnerCall> findInvariantCalls(
    DOM::FormulaSyntaxTree::ExprParts const& parts, FunctionTable const& functions);

/// The same calls by node, nested ones too.
[[nodiscard]] std::vector<bool> findInvariantNodes(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                                   FunctionTable const& functions);

}  // namespace Zorv::Formulas
