#include "Formulas/FindReferences.h"

#include <cstdint>
#include <set>
#include <utility>

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Evaluation/References.h"
#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;

/// Gathers the references of an expression and of the names that it uses.
class ReferenceFinder {
public:
  ReferenceFinder(Context const& context, ContextProvider const& provider)
      : _evaluator(context, provider, _dependencies, _workspace, builtinFunctions()) {}

  std::vector<Reference> find(ExprParts const& parts, Offset offset) {
    _frames.push_back({&parts, offset, {}});
    while (!_frames.empty()) {
      Frame const frame = _frames.back();
      _frames.pop_back();
      visit(frame);
    }
    return std::move(_references);
  }

private:
  void visit(Frame const& frame) {
    std::vector<bool> isPlaceOnly(frame.parts->nodes.size(), false);
    for (Node const& node : frame.parts->nodes) {
      if (node.kind == NodeKind::Function && node.argumentCount > 0 &&
          builtinFunctions().at(node.function).traits.asksPlaceOfFirst) {
        isPlaceOnly[node.firstArgument] = true;
      }
    }
    for (std::uint32_t node = 0; node < frame.parts->nodes.size(); ++node) {
      if (!isPlaceOnly[node]) {
        visitNode(frame, frame.nodeAt(node));
      }
    }
  }

  void visitNode(Frame const& frame, Node const& node) {
    if (node.kind == NodeKind::Reference) {
      add(resolveReference(_evaluator, frame, frame.parts->references[node.index]));
    } else if (node.kind == NodeKind::StructuredReference) {
      add(resolveStructuredReference(_evaluator, frame,
                                     frame.parts->structuredReferences[node.index]));
    } else if (node.kind == NodeKind::Name) {
      followName(frame, frame.parts->names[node.index]);
    }
  }

  void add(Value const& value) {
    for (Area const& area : areasOf(value)) {
      _references.push_back({area.table->getDocTableIndex(), area.toTableRange()});
    }
  }

  void followName(Frame const& frame, DOM::FormulaSyntaxTree::NameReference const& name) {
    TableContext const* const table = resolveSheet(_evaluator, frame, name.sheet);
    Expr const* const expr = table == nullptr
                                 ? nullptr
                                 : _evaluator.provider().findDefinedName(
                                       frame.parts->texts[name.name], table->getDocTableIndex());
    if (expr != nullptr && _followed.insert(expr).second) {
      // Names are written as seen from the sheet's first cell.
      Offset const offset{static_cast<long>(_evaluator.row()),
                          static_cast<long>(_evaluator.column())};
      _frames.push_back({&expr->getParts(), offset, {}});
    }
  }

  RuntimeDependenciesResolver _dependencies;
  Workspace _workspace;
  Evaluator _evaluator;
  std::vector<Frame> _frames;  ///< yet to be visited
  std::set<Expr const*> _followed;
  std::vector<Reference> _references;
};

}  // namespace

std::vector<Reference> findReferences(Expr const& expr, int columnOffset, int rowOffset,
                                      Context const& context,
                                      ContextProvider const& contextProvider) {
  return ReferenceFinder(context, contextProvider)
      .find(expr.getParts(), Offset{rowOffset, columnOffset});
}

}  // namespace Zorv::Formulas
