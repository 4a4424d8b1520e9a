#pragma once

#include <cstdint>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/TraceExpr.h"
#include "Formulas/Values/FunctionEntry.h"

namespace Zorv::Formulas {

/// The sub-expressions that a trace tells.
struct NodeChoice {
  std::vector<bool> isChosen;         ///< by node
  std::vector<std::uint32_t> depths;  ///< by node; of those that were looked at
  bool isCut = false;                 ///< the limits left some out
};

/// Chooses sub-expressions level by level, from the root on. Requires a formula that is not empty.
[[nodiscard]] NodeChoice chooseNodes(DOM::FormulaSyntaxTree::ExprParts const& parts,
                                     TraceLimits const& limits);

/// The traits of the function that a node calls; null for a node of another kind.
[[nodiscard]] FunctionTraits const* findTraits(DOM::FormulaSyntaxTree::Node const& node);

/// Calls `visit(argument, position)` for the arguments of a node.
template <class Visit>
void forEachArgument(DOM::FormulaSyntaxTree::ExprParts const& parts, std::uint32_t node,
                     Visit const& visit) {
  std::uint32_t argument = parts.nodes[node].firstArgument;
  for (std::uint32_t position = 0; position < parts.nodes[node].argumentCount; ++position) {
    visit(argument, position);
    argument = parts.nodes[argument].next;
  }
}

}  // namespace Zorv::Formulas
