// Functions of angles, in radians, and of the hyperbola.

#include <array>
#include <cmath>
#include <numbers>

#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

/// A function of one number; `#NUM!` outside its domain.
template <double (*function)(double)>
Value apply(Call& call) {
  return Value::number(function(call.number(0)));
}

/// One over a function of one number.
template <double (*function)(double)>
Value invert(Call& call) {
  double const value = function(call.number(0));
  return value == 0.0 ? Value::error(FormulaErrorCode::DivisionByZero) : Value::number(1.0 / value);
}

/// ATAN2(x, y): the angle of a point.
Value angleOfPoint(Call& call) {
  double const x = call.number(0);
  double const y = call.number(1);
  return x == 0.0 && y == 0.0 ? Value::error(FormulaErrorCode::DivisionByZero)
                              : Value::number(std::atan2(y, x));
}

/// ACOT: between 0 and pi.
double arcCotangent(double number) { return std::numbers::pi / 2.0 - std::atan(number); }
double arcHyperbolicCotangent(double number) { return std::atanh(1.0 / number); }

constexpr double degreesOfHalfTurn = 180.0;

Value toDegrees(Call& call) {
  return Value::number(call.number(0) / std::numbers::pi * degreesOfHalfTurn);
}

Value toRadians(Call& call) {
  return Value::number(call.number(0) / degreesOfHalfTurn * std::numbers::pi);
}

constexpr std::array entries = {
    FunctionEntry{"ACOS", "n", apply<std::acos>},
    FunctionEntry{"ACOSH", "n", apply<std::acosh>},
    FunctionEntry{"ACOT", "n", apply<arcCotangent>},
    FunctionEntry{"ACOTH", "n", apply<arcHyperbolicCotangent>},
    FunctionEntry{"ASIN", "n", apply<std::asin>},
    FunctionEntry{"ASINH", "n", apply<std::asinh>},
    FunctionEntry{"ATAN", "n", apply<std::atan>},
    FunctionEntry{"ATAN2", "nn", angleOfPoint},
    FunctionEntry{"ATANH", "n", apply<std::atanh>},
    FunctionEntry{"COS", "n", apply<std::cos>},
    FunctionEntry{"COSH", "n", apply<std::cosh>},
    FunctionEntry{"COT", "n", invert<std::tan>},
    FunctionEntry{"COTH", "n", invert<std::tanh>},
    FunctionEntry{"CSC", "n", invert<std::sin>},
    FunctionEntry{"CSCH", "n", invert<std::sinh>},
    FunctionEntry{"DEGREES", "n", toDegrees},
    FunctionEntry{"RADIANS", "n", toRadians},
    FunctionEntry{"SEC", "n", invert<std::cos>},
    FunctionEntry{"SECH", "n", invert<std::cosh>},
    FunctionEntry{"SIN", "n", apply<std::sin>},
    FunctionEntry{"SINH", "n", apply<std::sinh>},
    FunctionEntry{"TAN", "n", apply<std::tan>},
    FunctionEntry{"TANH", "n", apply<std::tanh>},
};

}  // namespace

std::span<FunctionEntry const> trigonometricFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
