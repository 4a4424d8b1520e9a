#include "Formulas/WriteExpr.h"

#include <utility>
#include <vector>

#include "Formulas/Text/ExprText.h"

namespace Zorv::Formulas {

std::string writeExpr(DOM::FormulaSyntaxTree::Expr const& expr) {
  auto const& parts = expr.getParts();
  if (parts.nodes.empty()) {
    return {};
  }
  std::vector<bool> isWanted(parts.nodes.size(), false);
  isWanted.back() = true;
  return std::move(writeNodes(parts, isWanted).back());
}

}  // namespace Zorv::Formulas
