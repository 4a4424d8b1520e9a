#include "Formulas/FindReferences.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <set>
#include <string_view>

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Evaluation/References.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;

/// Functions that ask where their first argument is, and not what it holds.
bool asksForPlace(std::string_view function) noexcept {
  static constexpr std::array<std::string_view, 5> names{"COLUMN", "COLUMNS", "OFFSET", "ROW",
                                                         "ROWS"};
  return std::ranges::find(names, function) != names.end();
}

/// Gathers the references of an expression and of the names that it uses.
class ReferenceFinder {
public:
  ReferenceFinder(Context const& context, ContextProvider const& provider)
      : _evaluator(context, provider, _dependencies, _workspace) {}

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
    std::vector<bool> asksPlace(frame.parts->nodes.size(), false);
    for (Node const& node : frame.parts->nodes) {
      if (node.kind == NodeKind::Function && node.argumentCount > 0 &&
          asksForPlace(frame.parts->texts[node.index])) {
        asksPlace[node.firstArgument] = true;
      }
    }
    for (std::uint32_t number = 0; number < frame.parts->nodes.size(); ++number) {
      if (!asksPlace[number]) {
        visitNode(frame, frame.nodeAt(number));
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
    if (value.isReference()) {
      Area const& area = value.asArea();
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
