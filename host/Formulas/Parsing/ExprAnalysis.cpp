#include "Formulas/Parsing/ExprAnalysis.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::ExprTraits;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::StructuredReference;

/// How the parent of a node uses its value.
enum class Use : std::uint8_t {
  Single,     ///< takes one value out of a range, by position
  Whole,      ///< takes a range as it is
  ByElement,  ///< evaluates everything element by element
};

/// Facts about a node and its subtree.
struct NodeFacts {
  Use use = Use::Whole;
  bool varies = false;      ///< its value may be another for another cell, or the next time
  bool readsRange = false;  ///< it reads more than one cell
  bool hasCall = false;     ///< it is a function call, or has one inside
  bool nestsCalls = false;  ///< it has a call inside of a call
};

class Analyser {
public:
  /// Walks from the root to the leaves, since what becomes of a range is its parent's affair.
  Analyser(ExprParts const& parts, FunctionTable const& functions)
      : _parts(&parts), _functions(&functions), _facts(parts.nodes.size()) {
    for (std::size_t i = _parts->nodes.size(); i-- > 0;) {
      inspect(_parts->nodes[i], _facts[i]);
      passUseOn(_parts->nodes[i], _facts[i].use);
    }
  }

  [[nodiscard]] ExprTraits const& traits() const noexcept { return _traits; }
  [[nodiscard]] PositionDependence const& position() const noexcept { return _position; }

  /// The facts of each node, what is below it taken in.
  [[nodiscard]] std::vector<NodeFacts> collectFacts() const {
    std::vector<NodeFacts> facts = _facts;
    for (std::size_t i = 0; i < facts.size(); ++i) {
      bool const isCall = _parts->nodes[i].kind == NodeKind::Function;
      facts[i].hasCall = isCall;
      forEachArgument(_parts->nodes[i], [&](std::uint32_t /*index*/, std::uint32_t argument) {
        facts[i].varies = facts[i].varies || facts[argument].varies;
        facts[i].readsRange = facts[i].readsRange || facts[argument].readsRange;
        facts[i].nestsCalls = facts[i].nestsCalls || facts[argument].nestsCalls ||
                              (isCall && facts[argument].hasCall);
        facts[i].hasCall = facts[i].hasCall || facts[argument].hasCall;
      });
    }
    return facts;
  }

  template <class Visit>
  void forEachArgument(Node const& node, Visit const& visit) const {
    std::uint32_t argument = node.firstArgument;
    for (std::uint32_t index = 0; index < node.argumentCount; ++index) {
      visit(index, argument);
      argument = _parts->nodes[argument].next;
    }
  }

private:
  void inspect(Node const& node, NodeFacts& facts) {
    switch (node.kind) {
      case NodeKind::Reference:
        inspectReference(_parts->references[node.index], facts);
        break;
      case NodeKind::StructuredReference:
        inspectStructured(_parts->structuredReferences[node.index], facts);
        break;
      case NodeKind::Name:
      case NodeKind::UnknownFunction:
        _traits.usesNames = true;
        dependOnCell(facts);
        break;
      case NodeKind::Unary:
      case NodeKind::Binary:
        inspectOperator(node, facts);
        break;
      case NodeKind::LocalName:
      case NodeKind::Call:
        facts.varies = true;
        noteRange(facts);
        break;
      case NodeKind::Function:
        inspectFunction(node, facts);
        break;
      default:
        break;
    }
  }

  void inspectReference(CellReference const& reference, NodeFacts& facts) {
    if (reference.isRelative()) {
      _traits.hasRelativeReferences = true;
      dependOn({.row = reference.firstRowIsRelative || reference.lastRowIsRelative,
                .column = reference.firstColumnIsRelative || reference.lastColumnIsRelative},
               facts);
    }
    if (!reference.isSingleCell()) {
      facts.readsRange = true;
      noteRange(facts);
    }
  }

  void inspectStructured(StructuredReference const& reference, NodeFacts& facts) {
    if (reference.thisRow || reference.list == noIndex) {
      dependOnCell(facts);
    }
    facts.readsRange = true;
    noteRange(facts);
  }

  void inspectOperator(Node const& node, NodeFacts& facts) {
    using DOM::FormulaSyntaxTree::Operator;
    if (isReferenceOperator(node.op)) {
      // The cells between two references are a dependency that each evaluation reports.
      facts.varies = node.op == Operator::Range;
      noteRange(facts);
    } else if (node.op == Operator::Single) {
      dependOnCell(facts);
    }
  }

  void inspectFunction(Node const& node, NodeFacts& facts) {
    FunctionTraits const& traits = _functions->at(node.function).traits;
    if (traits.isVolatile) {
      _traits.callsVolatileFunctions = true;
      _position = {.row = true, .column = true};
      facts.varies = true;
    }
    if (traits.dependsOnCell || (traits.asksPosition && node.argumentCount == 0)) {
      dependOnCell(facts);
    }
    if (traits.returnsReference) {
      noteRange(facts);
    }
  }

  void noteRange(NodeFacts& facts) {
    if (facts.use == Use::Single) {
      dependOnCell(facts);
    }
  }

  void dependOnCell(NodeFacts& facts) { dependOn({.row = true, .column = true}, facts); }

  void dependOn(PositionDependence const& position, NodeFacts& facts) {
    _traits.dependsOnCell = true;
    _position.row = _position.row || position.row;
    _position.column = _position.column || position.column;
    facts.varies = true;
  }

  void passUseOn(Node const& node, Use use) {
    forEachArgument(node, [&](std::uint32_t index, std::uint32_t argument) {
      _facts[argument].use = useOfArgument(node, index, use);
    });
  }

  [[nodiscard]] Use useOfArgument(Node const& node, std::uint32_t index, Use use) const {
    if (isReferenceOperator(node.op)) {
      return Use::Whole;
    }
    if (node.kind == NodeKind::Function) {
      Parameter const parameter = _functions->at(node.function).signature.at(index);
      if (parameter == Parameter::Array) {
        return Use::ByElement;
      }
      if (parameter == Parameter::Range) {
        return use == Use::ByElement ? use : Use::Whole;
      }
    }
    return use == Use::ByElement ? use : Use::Single;
  }

  ExprParts const* _parts;
  FunctionTable const* _functions;
  std::vector<NodeFacts> _facts;  ///< by node, each without what is below it
  ExprTraits _traits;
  PositionDependence _position;
};

/// True for a call that costs more than a look-up, and has the same value for every cell.
bool isInvariantCall(Node const& node, NodeFacts const& facts) noexcept {
  bool const isCostly = facts.readsRange || facts.nestsCalls;
  return node.kind == NodeKind::Function && isCostly && !facts.varies;
}

}  // namespace

ExprTraits analyse(ExprParts const& parts, FunctionTable const& functions) {
  return Analyser(parts, functions).traits();
}

PositionDependence analysePosition(ExprParts const& parts, FunctionTable const& functions) {
  return Analyser(parts, functions).position();
}

std::vector<InnerCall> findInvariantCalls(ExprParts const& parts, FunctionTable const& functions) {
  Analyser const analyser(parts, functions);
  std::vector<NodeFacts> const facts = analyser.collectFacts();
  std::vector<InnerCall> calls;
  std::vector<bool> isInside(parts.nodes.size());  // of a call that was found
  for (std::size_t i = parts.nodes.size(); i-- > 0;) {
    Node const& node = parts.nodes[i];
    bool const isFound = !isInside[i] && isInvariantCall(node, facts[i]);
    if (isFound) {
      calls.push_back({static_cast<std::uint32_t>(i), facts[i].use == Use::ByElement});
    }
    if (isFound || isInside[i]) {
      analyser.forEachArgument(node, [&](std::uint32_t /*index*/, std::uint32_t argument) {
        isInside[argument] = true;
      });
    }
  }
  return calls;
}

std::vector<bool> findInvariantNodes(ExprParts const& parts, FunctionTable const& functions) {
  std::vector<NodeFacts> const facts = Analyser(parts, functions).collectFacts();
  std::vector<bool> isInvariant(facts.size());
  for (std::size_t i = 0; i < facts.size(); ++i) {
    isInvariant[i] = isInvariantCall(parts.nodes[i], facts[i]);
  }
  return isInvariant;
}

}  // namespace Zorv::Formulas
