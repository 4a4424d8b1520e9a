#pragma once

#include <cmath>
#include <utility>

namespace Zorv {

/// Number of the value model: one IEEE double.
///
/// Comparisons compare the doubles without tolerance; a NaN makes every ordered comparison false.
/// Sums, products and quotients that are zero are +0.
class FloatNumber {
public:
  constexpr FloatNumber() noexcept = default;
  /// The number of a double.
  constexpr explicit FloatNumber(double value) noexcept : _value(value) {}

  /// The number as a double.
  [[nodiscard]] constexpr double get() const noexcept { return _value; }

  /// Exchanges two numbers.
  void swap(FloatNumber& other) noexcept { std::swap(_value, other._value); }

  /// Adds a number.
  constexpr FloatNumber& operator+=(FloatNumber other) noexcept { return *this = *this + other; }

  /// The sum.
  friend constexpr FloatNumber operator+(FloatNumber a, FloatNumber b) noexcept {
    return withoutNegativeZero(a._value + b._value);
  }
  /// The difference keeps the sign of a zero, unlike a sum.
  friend constexpr FloatNumber operator-(FloatNumber a, FloatNumber b) noexcept {
    return FloatNumber(a._value - b._value);
  }
  /// The product.
  friend constexpr FloatNumber operator*(FloatNumber a, FloatNumber b) noexcept {
    return withoutNegativeZero(a._value * b._value);
  }
  /// The quotient.
  friend constexpr FloatNumber operator/(FloatNumber a, FloatNumber b) noexcept {
    return withoutNegativeZero(a._value / b._value);
  }

  friend constexpr bool operator==(FloatNumber a, FloatNumber b) noexcept {
    return a._value == b._value;
  }
  friend constexpr bool operator<(FloatNumber a, FloatNumber b) noexcept {
    return a._value < b._value;
  }
  friend constexpr bool operator>(FloatNumber a, FloatNumber b) noexcept {
    return a._value > b._value;
  }
  friend constexpr bool operator<=(FloatNumber a, FloatNumber b) noexcept {
    return a._value <= b._value;
  }
  friend constexpr bool operator>=(FloatNumber a, FloatNumber b) noexcept {
    return a._value >= b._value;
  }

private:
  static constexpr FloatNumber withoutNegativeZero(double value) noexcept {
    return FloatNumber(value == 0.0 ? 0.0 : value);
  }

  double _value = 0.0;
};

/// The largest integer not above `number`.
[[nodiscard]] inline FloatNumber floor(FloatNumber number) noexcept {
  return FloatNumber(std::floor(number.get()));
}

}  // namespace Zorv
