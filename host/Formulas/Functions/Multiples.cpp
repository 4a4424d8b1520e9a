// Rounding to multiples, divisors of whole numbers.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"
#include "Formulas/Functions/Rounding.h"

namespace Zorv::Formulas {

namespace {

/// TRUNC(number, digits)
Value truncate(Call& call) {
  return Value::number(roundToDigits(call.number(0), call.number(1, 0.0), roundTowardsZero));
}

/// EVEN and ODD: away from zero.
Value toEven(Call& call) { return Value::number(2.0 * roundUp(call.number(0) / 2.0)); }

Value toOdd(Call& call) {
  double const number = call.number(0);
  double const odd = std::max(2.0 * roundUp((std::abs(number) - 1.0) / 2.0) + 1.0, 1.0);
  return Value::number(number < 0.0 ? -odd : odd);
}

/// MROUND(number, multiple): the nearest multiple, halves away from zero.
Value toNearestMultiple(Call& call) {
  double const number = call.number(0);
  double const multiple = call.number(1);
  if (number == 0.0 || multiple == 0.0) {
    return Value::number(0.0);
  }
  if ((number < 0.0) != (multiple < 0.0)) {
    return Value::error(FormulaErrorCode::Number);
  }
  return Value::number(multiple * roundHalfAwayFromZero(number / multiple));
}

/// The multiple of a step, whose sign does not matter, that is not above the number.
double multipleBelow(double number, double step) noexcept {
  double const size = std::abs(step);
  return size == 0.0 ? 0.0 : size * roundDown(number / size);
}

double multipleAbove(double number, double step) noexcept {
  double const below = multipleBelow(-number, step);
  return below == 0.0 ? 0.0 : -below;
}

/// The step of CEILING.MATH and FLOOR.MATH; 1 where none is given or it is left out.
double readStep(Call const& call) {
  bool const isGiven =
      call.has(1) && call.nodeOf(1).kind != DOM::FormulaSyntaxTree::NodeKind::Missing;
  return isGiven ? call.number(1) : 1.0;
}

/// CEILING.MATH(number, significance, mode): upwards; a mode that is not 0 takes negative numbers
/// away from zero.
Value ceilingByMode(Call& call) {
  double const number = call.number(0);
  double const step = readStep(call);
  bool const isAway = number < 0.0 && call.number(2, 0.0) != 0.0;
  return Value::number(isAway ? multipleBelow(number, step) : multipleAbove(number, step));
}

/// FLOOR.MATH(number, significance, mode): downwards; a mode that is not 0 takes negative numbers
/// towards zero.
Value floorByMode(Call& call) {
  double const number = call.number(0);
  double const step = readStep(call);
  bool const isToZero = number < 0.0 && call.number(2, 0.0) != 0.0;
  return Value::number(isToZero ? multipleAbove(number, step) : multipleBelow(number, step));
}

/// CEILING.PRECISE and FLOOR.PRECISE: up and down whatever the signs are.
Value preciseCeiling(Call& call) {
  return Value::number(multipleAbove(call.number(0), call.number(1, 1.0)));
}

Value preciseFloor(Call& call) {
  return Value::number(multipleBelow(call.number(0), call.number(1, 1.0)));
}

/// QUOTIENT(number, divisor): the whole part of the division.
Value quotient(Call& call) {
  double const divisor = call.number(1);
  return divisor == 0.0 ? Value::error(FormulaErrorCode::DivisionByZero)
                        : Value::number(roundTowardsZero(call.number(0) / divisor));
}

/// Doubles hold all whole numbers below this one.
constexpr double endOfWholeNumbers = 0x1p53;

double greatestDivisor(double a, double b) noexcept {
  while (b != 0.0) {
    double const remainder = std::fmod(a, b);
    a = b;
    b = remainder;
  }
  return a;
}

double leastMultiple(double a, double b) noexcept {
  return a == 0.0 || b == 0.0 ? 0.0 : a / greatestDivisor(a, b) * b;
}

/// Joins the whole parts of all numbers, which must not be negative.
template <double (*join)(double, double) noexcept>
Value joinWholeNumbers(Call& call, double initial) {
  double joined = initial;
  bool isInDomain = true;
  auto const error = visitNumbers(call, [&](double number, std::uint64_t /*times*/) {
    double const whole = std::trunc(number);
    isInDomain = isInDomain && 0.0 <= whole && whole < endOfWholeNumbers;
    joined = isInDomain ? join(joined, whole) : joined;
    isInDomain = isInDomain && joined < endOfWholeNumbers;
  });
  if (error) {
    return *error;
  }
  return isInDomain ? Value::number(joined) : Value::error(FormulaErrorCode::Number);
}

Value gcd(Call& call) { return joinWholeNumbers<greatestDivisor>(call, 0.0); }
Value lcm(Call& call) { return joinWholeNumbers<leastMultiple>(call, 1.0); }

}  // namespace

std::span<FunctionEntry const> multipleFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{
          "CEILING.MATH", "number:n, [multiple:n, mode:n]", ceilingByMode,
          "Number rounded up to a multiple; with a mode, negative numbers away from zero."},
      FunctionEntry{"CEILING.PRECISE", "number:n, [multiple:n]", preciseCeiling,
                    "Number rounded up to a multiple, whatever its sign."},
      FunctionEntry{"EVEN", "number:n", toEven, "Number rounded away from zero to an even number."},
      FunctionEntry{
          "FLOOR.MATH", "number:n, [multiple:n, mode:n]", floorByMode,
          "Number rounded down to a multiple; with a mode, negative numbers towards zero."},
      FunctionEntry{"FLOOR.PRECISE", "number:n, [multiple:n]", preciseFloor,
                    "Number rounded down to a multiple, whatever its sign."},
      FunctionEntry{"GCD", "number:a, (number:a)", gcd, "Greatest common divisor."},
      FunctionEntry{"ISO.CEILING", "number:n, [multiple:n]", preciseCeiling,
                    "Number rounded up to a multiple, whatever its sign."},
      FunctionEntry{"LCM", "number:a, (number:a)", lcm, "Least common multiple."},
      FunctionEntry{"MROUND", "number:n, multiple:n", toNearestMultiple,
                    "Number rounded to the nearest multiple."},
      FunctionEntry{"ODD", "number:n", toOdd, "Number rounded away from zero to an odd number."},
      FunctionEntry{"QUOTIENT", "number:n, divisor:n", quotient, "Whole part of a quotient."},
      FunctionEntry{"TRUNC", "number:n, [digits:n]", truncate,
                    "Number cut off after a number of digits."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
