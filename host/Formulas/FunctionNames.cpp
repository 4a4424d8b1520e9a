#include "Formulas/FunctionNames.h"

#include <algorithm>

#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::NodeKind;

void sortUniquely(std::vector<std::string>& names) {
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
}

}  // namespace

FunctionNames findFunctionNames(DOM::FormulaSyntaxTree::Expr const& expr) {
  FunctionNames names;
  auto const& parts = expr.getParts();
  for (auto const& node : parts.nodes) {
    if (node.kind == NodeKind::Function) {
      names.known.push_back(parts.texts[node.index]);
    } else if (node.kind == NodeKind::UnknownFunction) {
      names.unknown.push_back(parts.texts[node.index]);
    }
  }
  sortUniquely(names.known);
  sortUniquely(names.unknown);
  return names;
}

bool asksPosition(DOM::FormulaSyntaxTree::Expr const& expr) {
  return std::ranges::any_of(expr.getParts().nodes, [](DOM::FormulaSyntaxTree::Node const& node) {
    return node.kind == NodeKind::Function && node.argumentCount == 0 &&
           builtinFunctions().at(node.function).traits.asksPosition;
  });
}

}  // namespace Zorv::Formulas
