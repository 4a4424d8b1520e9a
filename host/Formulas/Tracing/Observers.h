#pragma once

#include <cstdint>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Formulas {

/// A formula with observing calls around some nodes; see observingFunctions().
struct ObservedFormula {
  DOM::FormulaSyntaxTree::ExprParts parts;
  std::vector<std::uint32_t> observedNode;  ///< by observing call: the node in the plain formula
};

/// Puts observing calls around the nodes for which `isObserved[node]` holds. The formula keeps its
/// value. Linear.
[[nodiscard]] ObservedFormula addObservers(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                           std::vector<bool> const& isObserved);

}  // namespace Zorv::Formulas
