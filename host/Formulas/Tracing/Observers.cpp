#include "Formulas/Tracing/Observers.h"

#include <cstddef>

#include "Formulas/Tracing/NodeChoice.h"
#include "Formulas/Tracing/ObservingFunctions.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;

/// Where the nodes of a formula come to stand.
struct NewIndices {
  std::vector<std::uint32_t> own;     ///< by node
  std::vector<std::uint32_t> outer;   ///< of the call around the node; `own` if there is none
  std::vector<std::uint32_t> parent;  ///< by node, not moved; noIndex for the root
  std::uint32_t count = 0;
};

NewIndices makeRoom(ExprParts const& parts, std::vector<bool> const& isObserved) {
  std::size_t const size = parts.nodes.size();
  NewIndices indices{.own = std::vector<std::uint32_t>(size),
                     .outer = std::vector<std::uint32_t>(size),
                     .parent = std::vector<std::uint32_t>(size, noIndex)};
  for (std::uint32_t node = 0; node < size; ++node) {
    indices.own[node] = indices.count++;
    indices.outer[node] = isObserved[node] ? indices.count++ : indices.own[node];
    forEachArgument(parts, node, [&](std::uint32_t argument, std::uint32_t /*position*/) {
      indices.parent[argument] = node;
    });
  }
  return indices;
}

}  // namespace

ExprParts addObservers(ExprParts const& parts, std::vector<bool> const& isObserved,
                       std::uint32_t firstId) {
  auto const [own, outer, parent, count] = makeRoom(parts, isObserved);
  ExprParts observed = parts;
  observed.nodes.resize(count);
  for (std::uint32_t node = 0; node < parts.nodes.size(); ++node) {
    Node entry = parts.nodes[node];
    if (entry.firstArgument != noIndex) {
      entry.firstArgument = outer[entry.firstArgument];
    }
    if (entry.next != noIndex) {
      entry.next = entry.next == parent[node] ? own[entry.next] : outer[entry.next];
    }
    if (isObserved[node]) {
      observed.nodes[outer[node]] = {.kind = NodeKind::Function,
                                     .function = getObservingFunction(),
                                     .argumentCount = 1,
                                     .firstArgument = own[node],
                                     .next = entry.next,
                                     .number = static_cast<double>(firstId + node)};
      entry.next = outer[node];
    }
    observed.nodes[own[node]] = entry;
  }
  return observed;
}

}  // namespace Zorv::Formulas
