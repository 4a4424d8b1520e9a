#pragma once

#include <cmath>
#include <compare>
#include <optional>
#include <utility>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/FormulaSyntaxTree/Node.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Rounding error of a sum or difference, relative to its operands.
inline constexpr double lastBits = 0x1p-49;

/// Orders two numbers, neither of which is NaN; both zeros are equal.
[[nodiscard]] constexpr std::strong_ordering compareNumbers(double left, double right) noexcept {
  return left < right   ? std::strong_ordering::less
         : left > right ? std::strong_ordering::greater
                        : std::strong_ordering::equal;
}

/// Orders numbers as the comparisons of formulas do: those that differ in their last bits only are
/// equal, so that `0.1+0.2=0.3` holds, as in the widespread programs. Neither is NaN.
[[nodiscard]] inline std::strong_ordering compareRoughly(double left, double right) noexcept {
  return std::abs(left - right) <= std::abs(left) * lastBits ? std::strong_ordering::equal
                                                             : compareNumbers(left, right);
}

/// True if a comparison operator holds for operands of an order.
[[nodiscard]] constexpr bool holdsFor(DOM::FormulaSyntaxTree::Operator comparison,
                                      std::strong_ordering order) noexcept {
  using DOM::FormulaSyntaxTree::Operator;
  switch (comparison) {
    case Operator::Equal:
      return order == 0;
    case Operator::NotEqual:
      return order != 0;
    case Operator::Less:
      return order < 0;
    case Operator::LessOrEqual:
      return order <= 0;
    case Operator::Greater:
      return order > 0;
    default:
      return order >= 0;
  }
}

/// A formula that compares one cell of its own table with a number, such as `A1>2.5`.
///
/// Threads: a value.
class NumberComparison {
public:
  /// Nothing for other formulas.
  [[nodiscard]] ZORV_HOST_EXPORT static std::optional<NumberComparison> find(
      DOM::FormulaSyntaxTree::Expr const& expr);

  /// The compared cell.
  [[nodiscard]] DOM::FormulaSyntaxTree::CellReference const& getCell() const noexcept {
    return _cell;
  }

  /// The value of the formula where the cell holds a finite number.
  [[nodiscard]] bool holds(double number) const noexcept {
    return holdsFor(_operator, _isCellFirst ? compareRoughly(number, _number)
                                            : compareRoughly(_number, number));
  }

  /// The least and the largest number of a cell for which this comparison and another one may have
  /// different values. Nothing if they differ in more than the number.
  [[nodiscard]] ZORV_HOST_EXPORT std::optional<std::pair<double, double>> findDifferent(
      NumberComparison const& other) const noexcept;

private:
  NumberComparison(DOM::FormulaSyntaxTree::CellReference const& cell,
                   DOM::FormulaSyntaxTree::Operator comparison, bool isCellFirst,
                   double number) noexcept
      : _cell(cell), _operator(comparison), _isCellFirst(isCellFirst), _number(number) {}

  DOM::FormulaSyntaxTree::CellReference _cell;
  DOM::FormulaSyntaxTree::Operator _operator;
  bool _isCellFirst;  ///< it stands to the left of the operator
  double _number;
};

}  // namespace Zorv::Formulas
