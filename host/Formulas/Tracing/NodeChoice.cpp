#include "Formulas/Tracing/NodeChoice.h"

#include <cstddef>
#include <deque>
#include <utility>

#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;

class NodeChooser {
public:
  NodeChooser(ExprParts const& parts, TraceLimits const& limits) : _parts(parts), _limits(limits) {
    _choice.isChosen.resize(parts.nodes.size(), false);
    _choice.depths.resize(parts.nodes.size(), 0);
  }

  NodeChoice choose() {
    _next.push_back(static_cast<std::uint32_t>(_parts.nodes.size() - 1));
    for (; !_next.empty(); _next.pop_front()) {
      visit(_next.front());
    }
    return std::move(_choice);
  }

private:
  void visit(std::uint32_t node) {
    // A function is no value to tell: its body has values, in the calls.
    if (hasOwnValue(node) && !isLambda(node)) {
      if (_chosenCount == _limits.steps || _choice.depths[node] > _limits.depth) {
        _choice.isCut = true;
        return;
      }
      _choice.isChosen[node] = true;
      ++_chosenCount;
    }
    forEachArgument(_parts, node, [&](std::uint32_t argument, std::uint32_t position) {
      bool const isCallee = _parts.nodes[node].kind == NodeKind::Call && position == 0;
      if (isCallee ? isLambda(argument) : hasValue(node, position)) {
        _choice.depths[argument] = _choice.depths[node] + 1;
        _next.push_back(argument);
      }
    });
  }

  [[nodiscard]] bool isLambda(std::uint32_t node) const {
    return bindsNames(node) && _parts.texts[_parts.nodes[node].index] == "LAMBDA";
  }

  [[nodiscard]] bool bindsNames(std::uint32_t node) const {
    auto const* const traits = findTraits(_parts.nodes[node]);
    return traits != nullptr && traits->bindsNames;
  }

  /// False for constants, signs before them included: they say themselves what they are.
  [[nodiscard]] bool hasOwnValue(std::uint32_t node) const {
    Node const& entry = _parts.nodes[node];
    return entry.kind == NodeKind::Unary ? hasOwnValue(entry.firstArgument)
                                         : entry.kind >= NodeKind::Reference;
  }

  /// False for what is in the place of an argument and is not evaluated to a value: the names of
  /// LET and LAMBDA, a reference of which the place is asked, elements of arrays.
  [[nodiscard]] bool hasValue(std::uint32_t node, std::uint32_t position) const {
    Node const& entry = _parts.nodes[node];
    auto const* const traits = findTraits(entry);
    if (isLambda(node)) {
      return position + 1 == entry.argumentCount;
    }
    if (traits != nullptr && traits->bindsNames) {
      return position % 2 == 1 || position + 1 == entry.argumentCount;
    }
    bool const isPlace = traits != nullptr && traits->asksPlaceOfFirst && position == 0;
    return !isPlace && entry.kind != NodeKind::ArrayConstant;
  }

  ExprParts const& _parts;
  TraceLimits const& _limits;
  NodeChoice _choice;
  std::size_t _chosenCount = 0;
  std::deque<std::uint32_t> _next;
};

}  // namespace

FunctionTraits const* findTraits(Node const& node) {
  return node.kind == NodeKind::Function ? &builtinFunctions().at(node.function).traits : nullptr;
}

NodeChoice chooseNodes(ExprParts const& parts, TraceLimits const& limits) {
  return NodeChooser(parts, limits).choose();
}

}  // namespace Zorv::Formulas
