// Functions of angles, in radians, and of the hyperbola.

#include <array>
#include <cmath>
#include <numbers>

#include "Formulas/Evaluation/Call.h"
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

}  // namespace

std::span<FunctionEntry const> trigonometricFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"ACOS", "number:n", apply<std::acos>, "Angle of a cosine, in radians."},
      FunctionEntry{"ACOSH", "number:n", apply<std::acosh>, "Inverse hyperbolic cosine."},
      FunctionEntry{"ACOT", "number:n", apply<arcCotangent>, "Angle of a cotangent, in radians."},
      FunctionEntry{"ACOTH", "number:n", apply<arcHyperbolicCotangent>,
                    "Inverse hyperbolic cotangent."},
      FunctionEntry{"ASIN", "number:n", apply<std::asin>, "Angle of a sine, in radians."},
      FunctionEntry{"ASINH", "number:n", apply<std::asinh>, "Inverse hyperbolic sine."},
      FunctionEntry{"ATAN", "number:n", apply<std::atan>, "Angle of a tangent, in radians."},
      FunctionEntry{"ATAN2", "x:n, y:n", angleOfPoint, "Angle of a point, in radians."},
      FunctionEntry{"ATANH", "number:n", apply<std::atanh>, "Inverse hyperbolic tangent."},
      FunctionEntry{"COS", "angle:n", apply<std::cos>, "Cosine of an angle in radians."},
      FunctionEntry{"COSH", "number:n", apply<std::cosh>, "Hyperbolic cosine."},
      FunctionEntry{"COT", "angle:n", invert<std::tan>, "Cotangent of an angle in radians."},
      FunctionEntry{"COTH", "number:n", invert<std::tanh>, "Hyperbolic cotangent."},
      FunctionEntry{"CSC", "angle:n", invert<std::sin>, "Cosecant of an angle in radians."},
      FunctionEntry{"CSCH", "number:n", invert<std::sinh>, "Hyperbolic cosecant."},
      FunctionEntry{"DEGREES", "angle:n", toDegrees, "Angle in degrees."},
      FunctionEntry{"RADIANS", "angle:n", toRadians, "Angle in radians."},
      FunctionEntry{"SEC", "angle:n", invert<std::cos>, "Secant of an angle in radians."},
      FunctionEntry{"SECH", "number:n", invert<std::cosh>, "Hyperbolic secant."},
      FunctionEntry{"SIN", "angle:n", apply<std::sin>, "Sine of an angle in radians."},
      FunctionEntry{"SINH", "number:n", apply<std::sinh>, "Hyperbolic sine."},
      FunctionEntry{"TAN", "angle:n", apply<std::tan>, "Tangent of an angle in radians."},
      FunctionEntry{"TANH", "number:n", apply<std::tanh>, "Hyperbolic tangent."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
