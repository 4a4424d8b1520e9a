// Arithmetic and rounding.

#include <array>
#include <cmath>
#include <cstdint>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/Rounding.h"

namespace Zorv::Formulas {

namespace {

Value absolute(Call& call) { return Value::number(std::abs(call.number(0))); }

/// INT: the largest whole number that is not above.
Value wholePart(Call& call) { return Value::number(roundDown(call.number(0))); }

/// The remainder, with the number's sign. Whole numbers are divided as such, which is exact, too,
/// and many times faster.
double remainderOf(double number, double divisor) noexcept {
  constexpr double allWhole = 0x1p53;
  if (std::abs(number) < allWhole && std::abs(divisor) < allWhole) {
    auto const wholeNumber = static_cast<std::int64_t>(number);
    auto const wholeDivisor = static_cast<std::int64_t>(divisor);
    if (static_cast<double>(wholeNumber) == number &&
        static_cast<double>(wholeDivisor) == divisor) {
      return static_cast<double>(wholeNumber % wholeDivisor);
    }
  }
  return std::fmod(number, divisor);
}

/// MOD(number, divisor): the remainder, with the divisor's sign.
Value mod(Call& call) {
  double const number = call.number(0);
  double const divisor = call.number(1);
  if (divisor == 0.0) {
    return Value::error(FormulaErrorCode::DivisionByZero);
  }
  double const remainder = remainderOf(number, divisor);
  bool const hasOtherSign = remainder != 0.0 && (remainder < 0.0) != (divisor < 0.0);
  return Value::number(hasOtherSign ? remainder + divisor : remainder);
}

Value roundHalfAway(Call& call) {
  return Value::number(roundToDigits(call.number(0), call.number(1), roundHalfAwayFromZero));
}

Value roundAwayFromZero(Call& call) {
  return Value::number(roundToDigits(call.number(0), call.number(1), roundUp));
}

Value roundTowardZero(Call& call) {
  return Value::number(roundToDigits(call.number(0), call.number(1), roundTowardsZero));
}

/// FLOOR(number, multiple) and CEILING. A negative multiple reverses the direction for negative
/// numbers.
Value floorToMultiple(Call& call) {
  double const number = call.number(0);
  double const multiple = call.number(1);
  if (multiple == 0.0) {
    return number == 0.0 ? Value::number(0.0) : Value::error(FormulaErrorCode::DivisionByZero);
  }
  if (number > 0.0 && multiple < 0.0) {
    return Value::error(FormulaErrorCode::Number);
  }
  return Value::number(multiple * roundDown(number / multiple));
}

Value ceilingToMultiple(Call& call) {
  double const number = call.number(0);
  double const multiple = call.number(1);
  if (multiple == 0.0 || number == 0.0) {
    return Value::number(0.0);
  }
  if (number > 0.0 && multiple < 0.0) {
    return Value::error(FormulaErrorCode::Number);
  }
  return Value::number(multiple * -roundDown(-(number / multiple)));
}

Value sum(Call& call) {
  Totals const totals = addUp(call);
  return totals.error ? *totals.error : Value::number(totals.sum);
}

}  // namespace

std::span<FunctionEntry const> mathFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"ABS", "number:n", absolute, "Absolute value."},
      FunctionEntry{"CEILING", "number:n, multiple:n", ceilingToMultiple,
                    "Number rounded up to a multiple, away from zero for a negative multiple."},
      FunctionEntry{"FLOOR", "number:n, multiple:n", floorToMultiple,
                    "Number rounded down to a multiple, towards zero for a negative multiple."},
      FunctionEntry{"INT", "number:n", wholePart, "Largest whole number that is not above."},
      FunctionEntry{"MOD", "number:n, divisor:n", mod,
                    "Remainder of a division, with the divisor's sign."},
      FunctionEntry{"ROUND", "number:n, digits:n", roundHalfAway,
                    "Number rounded to a number of digits, halves away from zero."},
      FunctionEntry{"ROUNDDOWN", "number:n, digits:n", roundTowardZero,
                    "Number rounded towards zero to a number of digits."},
      FunctionEntry{"ROUNDUP", "number:n, digits:n", roundAwayFromZero,
                    "Number rounded away from zero to a number of digits."},
      FunctionEntry{"SUM", "number:a, (number:a)", sum, "Sum of numbers."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
