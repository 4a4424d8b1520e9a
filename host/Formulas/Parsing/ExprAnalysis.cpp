#include "Formulas/Parsing/ExprAnalysis.h"

#include <cstdint>
#include <vector>

#include "Formulas/Functions/FunctionRegistry.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::ExprTraits;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::StructuredReference;

/// What the parent of a node does with its value.
enum class Use : std::uint8_t {
  Single,     ///< takes one value out of a range, by position
  Whole,      ///< takes a range as it is
  ByElement,  ///< evaluates everything element by element
};

class Analyser {
public:
  explicit Analyser(ExprParts const& parts)
      : _parts(&parts), _uses(parts.nodes.size(), Use::Whole) {}

  /// Walks from the root to the leaves, since what becomes of a range is its parent's affair.
  ExprTraits run() {
    for (std::size_t i = _parts->nodes.size(); i-- > 0;) {
      Node const& node = _parts->nodes[i];
      inspect(node, _uses[i]);
      passUseOn(node, _uses[i]);
    }
    return _traits;
  }

private:
  void inspect(Node const& node, Use use) {
    switch (node.kind) {
      case NodeKind::Reference:
        inspectReference(_parts->references[node.index], use);
        break;
      case NodeKind::StructuredReference:
        inspectStructured(_parts->structuredReferences[node.index], use);
        break;
      case NodeKind::Name:
        _traits.usesNames = true;
        _traits.dependsOnCell = true;
        break;
      case NodeKind::Unary:
      case NodeKind::Binary:
        inspectOperator(node, use);
        break;
      case NodeKind::LocalName:
        noteRange(use);
        break;
      case NodeKind::Function:
        inspectFunction(node, use);
        break;
      default:
        break;
    }
  }

  void inspectReference(CellReference const& reference, Use use) {
    if (reference.isRelative()) {
      _traits.hasRelativeReferences = true;
      _traits.dependsOnCell = true;
    }
    if (!reference.isSingleCell()) {
      noteRange(use);
    }
  }

  void inspectStructured(StructuredReference const& reference, Use use) {
    if (reference.thisRow || reference.list == noIndex) {
      _traits.dependsOnCell = true;
    }
    noteRange(use);
  }

  void inspectOperator(Node const& node, Use use) {
    if (isReferenceOperator(node.op)) {
      noteRange(use);
    } else if (node.op == DOM::FormulaSyntaxTree::Operator::Single) {
      _traits.dependsOnCell = true;
    }
  }

  void inspectFunction(Node const& node, Use use) {
    FunctionTraits const& traits = FunctionRegistry::get().at(node.function).traits;
    if (traits.isVolatile) {
      _traits.callsVolatileFunctions = true;
    }
    if (traits.dependsOnCell || (traits.asksPosition && node.argumentCount == 0)) {
      _traits.dependsOnCell = true;
    }
    if (traits.returnsReference) {
      noteRange(use);
    }
  }

  void noteRange(Use use) { _traits.dependsOnCell = _traits.dependsOnCell || use == Use::Single; }

  void passUseOn(Node const& node, Use use) {
    std::uint32_t argument = node.firstArgument;
    for (std::uint32_t i = 0; i < node.argumentCount; ++i) {
      _uses[argument] = useOfArgument(node, i, use);
      argument = _parts->nodes[argument].next;
    }
  }

  static Use useOfArgument(Node const& node, std::uint32_t index, Use use) {
    if (isReferenceOperator(node.op)) {
      return Use::Whole;
    }
    if (node.kind == NodeKind::Function) {
      Parameter const parameter = FunctionRegistry::get().at(node.function).signature.at(index);
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
  std::vector<Use> _uses;
  ExprTraits _traits;
};

}  // namespace

ExprTraits analyse(ExprParts const& parts) { return Analyser(parts).run(); }

}  // namespace Zorv::Formulas
