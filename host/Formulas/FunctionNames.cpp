#include "Formulas/FunctionNames.h"

#include <algorithm>

namespace Zorv::Formulas {

namespace {

void sortUniquely(std::vector<std::string>& names) {
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
}

}  // namespace

FunctionNames findFunctionNames(DOM::FormulaSyntaxTree::Expr const& expr) {
  using DOM::FormulaSyntaxTree::NodeKind;
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

}  // namespace Zorv::Formulas
