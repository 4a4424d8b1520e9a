#include "Formulas/NumberComparison.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace Zorv::Formulas {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;

std::optional<NumberComparison> NumberComparison::find(Expr const& expr) {
  ExprParts const& parts = expr.getParts();
  constexpr std::size_t nodesOfComparison = 3;
  if (parts.nodes.size() != nodesOfComparison) {
    return std::nullopt;
  }
  Node const& root = parts.nodes.back();
  bool const compares = root.kind == NodeKind::Binary && Operator::Equal <= root.op &&
                        root.op <= Operator::GreaterOrEqual;
  bool const isCellFirst = parts.nodes[0].kind == NodeKind::Reference;
  Node const& reference = parts.nodes[isCellFirst ? 0 : 1];
  Node const& number = parts.nodes[isCellFirst ? 1 : 0];
  if (!compares || reference.kind != NodeKind::Reference || number.kind != NodeKind::Number) {
    return std::nullopt;
  }
  auto const& cell = parts.references[reference.index];
  if (!cell.isSingleCell() || cell.sheet != DOM::FormulaSyntaxTree::noIndex ||
      !std::isfinite(number.number)) {
    return std::nullopt;
  }
  return NumberComparison(cell, root.op, isCellFirst, number.number);
}

std::optional<std::pair<double, double>> NumberComparison::findDifferent(
    NumberComparison const& other) const noexcept {
  if (_cell != other._cell || _operator != other._operator || _isCellFirst != other._isCellFirst) {
    return std::nullopt;
  }
  auto const [least, most] = std::minmax(_number, other._number);
  // More than the last bits in which a number may differ from an equal one.
  constexpr double margin = 4 * lastBits;
  return std::pair(least - std::abs(least) * margin, most + std::abs(most) * margin);
}

}  // namespace Zorv::Formulas
