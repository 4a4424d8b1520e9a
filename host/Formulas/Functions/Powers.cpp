// Powers, roots, logarithms and what counts arrangements.

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <optional>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Evaluation/Operators.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Numbers.h"

namespace Zorv::Formulas {

namespace {

/// POWER(base, exponent): what the operator `^` gives.
Value power(Call& call) {
  return applyBinary(DOM::FormulaSyntaxTree::Operator::Power, call[0], call[1], call.evaluator());
}

Value squareRoot(Call& call) { return Value::number(std::sqrt(call.number(0))); }

/// SQRTPI: the root of the number times pi.
Value squareRootOfPi(Call& call) {
  return Value::number(std::sqrt(call.number(0) * std::numbers::pi));
}

Value exponential(Call& call) { return Value::number(std::exp(call.number(0))); }

Value naturalLogarithm(Call& call) { return Value::number(std::log(call.number(0))); }

Value decimalLogarithm(Call& call) { return Value::number(std::log10(call.number(0))); }

/// LOG(number, base); without a base the decimal logarithm.
Value logarithm(Call& call) {
  constexpr double decimal = 10.0;
  double const number = call.number(0);
  double const base = call.number(1, decimal);
  if (number <= 0.0 || base <= 0.0) {
    return notANumber();
  }
  if (base == 1.0) {
    return Value::error(FormulaErrorCode::DivisionByZero);
  }
  if (base == decimal) {
    return Value::number(std::log10(number));
  }
  return Value::number(base == 2.0 ? std::log2(number) : std::log(number) / std::log(base));
}

Value sign(Call& call) {
  double const number = call.number(0);
  return Value::number(number > 0.0 ? 1.0 : number < 0.0 ? -1.0 : 0.0);
}

Value pi(Call& /*call*/) { return Value::number(std::numbers::pi); }

/// The product of the whole numbers from `number` down to 1 in steps; not finite where it is too
/// large. The wider type keeps the product's last bits right.
double multiplyDown(double number, int step) noexcept {
  // The products of both steps overflow far below.
  constexpr double tooMany = 400.0;
  if (number > tooMany) {
    return std::numeric_limits<double>::infinity();
  }
  long double product = 1.0L;
  for (int factor = static_cast<int>(number); factor > 1; factor -= step) {
    product *= factor;
  }
  return static_cast<double>(product);
}

Value factorial(Call& call) {
  double const number = std::trunc(call.number(0));
  return number < 0.0 ? notANumber() : Value::number(multiplyDown(number, 1));
}

/// FACTDOUBLE: the product of every second number; -1 has the empty product, too.
Value doubleFactorial(Call& call) {
  double const number = std::trunc(call.number(0));
  return number < -1.0 ? notANumber() : Value::number(multiplyDown(number, 2));
}

/// How many ways there are to choose `chosen` things of `available` ones; not finite where there
/// are too many. Requires whole numbers, 0 <= chosen <= available.
double countChoices(double available, double chosen) noexcept {
  double const fewer = std::min(chosen, available - chosen);
  long double count = 1.0L;
  // Each factor is at least 2 but for the last ones, so that the loop is short however many things
  // are chosen.
  for (int i = 1; i <= fewer && count <= std::numeric_limits<double>::max(); ++i) {
    count = std::round(count * (static_cast<long double>(available) - fewer + i) / i);
  }
  return static_cast<double>(count);
}

/// The steps of countChoices(), at most.
constexpr std::uint64_t stepsOfChoices = 2000;

/// COMBIN(number, chosen)
Value combinations(Call& call) {
  double const number = std::trunc(call.number(0));
  double const chosen = std::trunc(call.number(1));
  if (chosen < 0.0 || number < chosen) {
    return notANumber();
  }
  call.steps().spend(stepsOfChoices);
  return Value::number(countChoices(number, chosen));
}

/// COMBINA(number, chosen): each thing may be chosen more than once.
Value combinationsWithRepetition(Call& call) {
  double const number = std::trunc(call.number(0));
  double const chosen = std::trunc(call.number(1));
  if (chosen < 0.0 || number < 0.0 || (number == 0.0 && chosen != 0.0)) {
    return notANumber();
  }
  call.steps().spend(stepsOfChoices);
  return Value::number(chosen == 0.0 ? 1.0 : countChoices(number + chosen - 1.0, chosen));
}

/// MULTINOMIAL: the factorial of the sum over the product of the factorials.
Value multinomial(Call& call) {
  NumberList list(call, 0, call.count());
  if (list.error()) {
    return *list.error();
  }
  double total = 0.0;
  double product = 1.0;
  for (double const listed : list.numbers()) {
    double const number = std::trunc(listed);
    if (number < 0.0) {
      return notANumber();
    }
    total += number;
    call.steps().spend(stepsOfChoices);
    product *= countChoices(total, number);
  }
  return Value::number(product);
}

}  // namespace

std::span<FunctionEntry const> powerFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"COMBIN", "count:n, chosen:n", combinations,
                    "Number of ways to choose some of several things."},
      FunctionEntry{
          "COMBINA", "count:n, chosen:n", combinationsWithRepetition,
          "Number of ways to choose some of several things, where each may be chosen again."},
      FunctionEntry{"EXP", "number:n", exponential, "Power of e."},
      FunctionEntry{"FACT", "number:n", factorial, "Factorial."},
      FunctionEntry{"FACTDOUBLE", "number:n", doubleFactorial,
                    "Product of every second whole number up to a number."},
      FunctionEntry{"LN", "number:n", naturalLogarithm, "Natural logarithm."},
      FunctionEntry{"LOG", "number:n, [base:n]", logarithm, "Logarithm to a base, or to base 10."},
      FunctionEntry{"LOG10", "number:n", decimalLogarithm, "Logarithm to base 10."},
      FunctionEntry{
          "MULTINOMIAL", "number:a, (number:a)", multinomial,
          "Multinomial coefficient: the factorial of a sum by the product of the factorials."},
      FunctionEntry{"PI", "", pi, "The number pi."},
      FunctionEntry{"POWER", "base:n, exponent:n", power, "Power of a number."},
      FunctionEntry{"SIGN", "number:n", sign, "-1, 0 or 1, by the sign of a number."},
      FunctionEntry{"SQRT", "number:n", squareRoot, "Square root."},
      FunctionEntry{"SQRTPI", "number:n", squareRootOfPi, "Square root of a number times pi."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
