#include "ConditionalFormatters/Live/CndFrmt_FormulaMoves.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <boost/variant/get.hpp>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/NumberComparison.h"

namespace Zorv::ConditionalFormatters {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::Node;
using CommonValue = boost::optional<FormulaValue>;

std::optional<double> findNumber(CommonValue const& value) noexcept {
  auto const* const number = value ? boost::get<FormulaModel::FormulaNumber>(&*value) : nullptr;
  return number == nullptr || std::isnan(number->value.get()) ? std::nullopt
                                                              : std::optional(number->value.get());
}

/// True for equal formulas, in which zeros also have the same sign.
bool isSameFormula(Expr const& a, Expr const& b) {
  return a == b && std::ranges::equal(
                       a.getParts().nodes, b.getParts().nodes, {},
                       [](Node const& node) { return std::signbit(node.number); },
                       [](Node const& node) { return std::signbit(node.number); });
}

bool isSameCommonValue(CommonValue const& a, CommonValue const& b) {
  return a && b ? isSameFormula(Expr::constant(*a), Expr::constant(*b)) : !a && !b;
}

/// Adds the move of what is evaluated for each cell. False if any cell may be judged otherwise.
bool addMoveOfRest(Expr const& before, Expr const& after, FormulaPlace const& place,
                   NumberMoves& moves) {
  if (isSameFormula(before, after)) {
    return true;
  }
  auto const from = Formulas::NumberComparison::find(before);
  auto const to = Formulas::NumberComparison::find(after);
  if (!from || !to || !place.isOwnCell(from->getCell())) {
    return false;
  }
  auto const different = from->findDifferent(*to);
  // Empty cells, and places without a cell, are compared as zero.
  if (!different || (different->first <= 0 && 0 <= different->second)) {
    return false;
  }
  moves.push_back({different->first, different->second, true});
  return true;
}

/// The same for a value that all cells have in common. `isCompared`: cells' values are compared
/// with it, each with one of its own kind alone.
bool addMoveOfValue(CommonValue const& before, CommonValue const& after, bool isCompared,
                    NumberMoves& moves) {
  if (isSameCommonValue(before, after)) {
    return true;
  }
  auto const from = findNumber(before);
  auto const to = findNumber(after);
  if (!isCompared || !from || !to) {
    return false;
  }
  auto const [least, most] = std::minmax(*from, *to);
  moves.push_back({least, most, false});
  return true;
}

bool addMove(PreparedFormula const& before, PreparedFormula const& after, bool isCompared,
             FormulaPlace const& place, NumberMoves& moves) {
  auto const from = before.findCommon();
  auto const to = after.findCommon();
  if (!from || !to) {
    return false;
  }
  return from->value != nullptr ? addMoveOfValue(*from->value, *to->value, isCompared, moves)
                                : addMoveOfRest(*from->rest, *to->rest, place, moves);
}

}  // namespace

bool FormulaPlace::isOwnCell(CellReference const& reference) const {
  unsigned long const row = baseCell.getRow().get();
  unsigned long const column = baseCell.getColumn().get();
  bool const isOwnRow = reference.firstRow == row && reference.firstRowIsRelative;
  bool const isOwnColumn =
      reference.firstColumn == column &&
      (reference.firstColumnIsRelative || std::ranges::all_of(ranges, [&](TableRange const& range) {
         return range.firstColumn == column && range.endColumn == column + 1;
       }));
  return reference.isSingleCell() && reference.sheet == DOM::FormulaSyntaxTree::noIndex &&
         isOwnRow && isOwnColumn;
}

std::optional<NumberMoves> findMoves(PreparedCondition const& before,
                                     PreparedCondition const& after, FormulaPlace const& place) {
  auto const from = before.listFormulas();
  auto const to = after.listFormulas();
  bool const comparesValues = before.comparesWithFormulas();
  NumberMoves moves;
  for (std::size_t formula = 0; formula < from.size(); ++formula) {
    if (!addMove(*from[formula], *to[formula], comparesValues, place, moves)) {
      return std::nullopt;
    }
  }
  return moves;
}

}  // namespace Zorv::ConditionalFormatters
