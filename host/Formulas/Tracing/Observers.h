#pragma once

#include <cstdint>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"

namespace Zorv::Formulas {

/// The formula with observing calls around the nodes for which `isObserved[node]` holds; see
/// observingFunctions(). It keeps its value. The call around a node has the identity `firstId` plus
/// the node's index. Linear.
[[nodiscard]] DOM::FormulaSyntaxTree::ExprParts addObservers(
    DOM::FormulaSyntaxTree::ExprParts const& parts, std::vector<bool> const& isObserved,
    std::uint32_t firstId);

}  // namespace Zorv::Formulas
