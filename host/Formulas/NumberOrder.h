#pragma once

#include <cmath>
#include <compare>

#include "DOM/FormulaSyntaxTree/Node.h"

/// How formulas order numbers.
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

}  // namespace Zorv::Formulas
