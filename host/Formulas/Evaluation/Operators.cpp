#include "Formulas/Evaluation/Operators.h"

#include <cmath>
#include <span>

#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/NumberOrder.h"
#include "Formulas/Values/Coercion.h"
#include "Formulas/Values/Comparison.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Operator;

Value power(double base, double exponent) noexcept {
  if (base == 0.0 && exponent == 0.0) {
    return Value::error(FormulaErrorCode::Number);
  }
  if (base == 0.0 && exponent < 0.0) {
    return Value::error(FormulaErrorCode::DivisionByZero);
  }
  return Value::number(std::pow(base, exponent));
}

/// A sum or difference of nearly equal numbers is zero where only the last bits are left of them,
/// so that `0.1+0.2-0.3` is 0, as in the widespread programs.
Value sumOf(double left, double right) noexcept {
  double const sum = left + right;
  bool const isNoise = std::abs(sum) < std::abs(left) * lastBits;
  return Value::number(isNoise ? 0.0 : sum);
}

Value applyToNumbers(Operator op, double left, double right) noexcept {
  switch (op) {
    case Operator::Add:
      return sumOf(left, right);
    case Operator::Subtract:
      return sumOf(left, -right);
    case Operator::Multiply:
      return Value::number(left * right);
    case Operator::Divide:
      return right == 0.0 ? Value::error(FormulaErrorCode::DivisionByZero)
                          : Value::number(left / right);
    case Operator::Power:
      return power(left, right);
    default:
      return Value::boolean(holdsFor(op, compareRoughly(left, right)));
  }
}

std::uint64_t stepsOfNumber(Value const& value) noexcept {
  return value.isText() ? stepsOfReading(value.asText()) : 0;
}

Value applyArithmetic(Operator op, Value const& left, Value const& right, Evaluator& evaluator) {
  evaluator.steps().spend(stepsOfNumber(left) + stepsOfNumber(right));
  auto const leftNumber = toNumber(left, evaluator.locale());
  if (leftNumber.isError()) {
    return leftNumber.error();
  }
  auto const rightNumber = toNumber(right, evaluator.locale());
  return rightNumber.isError() ? rightNumber.error()
                               : applyToNumbers(op, *leftNumber, *rightNumber);
}

Value concatenate(Value const& left, Value const& right, Evaluator& evaluator) {
  auto const leftText = evaluator.toText(left);
  auto const rightText = evaluator.toText(right);
  if (leftText.isError() || rightText.isError()) {
    return leftText.isError() ? leftText.error() : rightText.error();
  }
  std::span<char> const room =
      evaluator.arena().makeArray<char>((*leftText).size() + (*rightText).size());
  (*leftText).copy(room.data(), (*leftText).size());
  (*rightText).copy(room.data() + (*leftText).size(), (*rightText).size());
  return Evaluator::checkText({room.data(), room.size()});
}

}  // namespace

Value applyBinary(Operator op, Value const& left, Value const& right, Evaluator& evaluator) {
  if (left.isNumber() && right.isNumber() && op != Operator::Concatenate) {
    return applyToNumbers(op, left.asNumber(), right.asNumber());
  }
  if (left.isError() || right.isError()) {
    return left.isError() ? left : right;
  }
  switch (op) {
    case Operator::Add:
    case Operator::Subtract:
    case Operator::Multiply:
    case Operator::Divide:
    case Operator::Power:
      return applyArithmetic(op, left, right, evaluator);
    case Operator::Concatenate:
      return concatenate(left, right, evaluator);
    default:
      evaluator.steps().spend(stepsOfComparison(left, right));
      return Value::boolean(holdsFor(op, compareValues(left, right)));
  }
}

Value applyUnary(Operator op, Value const& argument, Evaluator& evaluator) {
  evaluator.steps().spend(stepsOfNumber(argument));
  auto const number = toNumber(argument, evaluator.locale());
  if (number.isError()) {
    return number.error();
  }
  if (op == Operator::Percent) {
    return Value::number(*number / 100.0);
  }
  return Value::number(*number == 0.0 ? 0.0 : -*number);
}

}  // namespace Zorv::Formulas
