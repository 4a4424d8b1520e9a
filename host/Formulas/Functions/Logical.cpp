// Truth values and choices.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "Formulas/Evaluation/Arrays.h"
#include "Formulas/Evaluation/Coercion.h"
#include "Formulas/Evaluation/Elements.h"
#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::NodeKind;

/// What the arguments of AND, OR and XOR say: in ranges numbers and truth values count, and texts
/// and empties do not; a single value is converted.
class Truths {
public:
  explicit Truths(Call const& call) {
    for (Value const& argument : call.arguments()) {
      if (_error) {
        return;
      }
      argument.isSingle() ? takeSingle(argument) : takeElements(argument);
    }
    if (_count == 0 && !_error) {
      _error = Value::error(FormulaErrorCode::Value);
    }
  }

  [[nodiscard]] std::optional<Value> const& error() const noexcept { return _error; }
  [[nodiscard]] bool all() const noexcept { return _trueCount == _count; }
  [[nodiscard]] bool any() const noexcept { return _trueCount != 0; }
  [[nodiscard]] bool isOdd() const noexcept { return _trueCount % 2 != 0; }

private:
  void takeSingle(Value const& argument, std::uint64_t times = 1) {
    auto const truth = toTruth(argument);
    if (truth.isError()) {
      _error = truth.error();
    } else {
      _count += times;
      _trueCount += *truth ? times : 0;
    }
  }

  void takeElements(Value const& argument) {
    forEachElement(argument, [this](Value const& element, std::uint64_t times) {
      if (element.isError()) {
        _error = element;
      } else if (element.isBoolean() || element.isNumber()) {
        takeSingle(element, times);
      }
      return !_error;
    });
  }

  std::uint64_t _count = 0;
  std::uint64_t _trueCount = 0;
  std::optional<Value> _error;
};

Value logicalAnd(Call& call) {
  Truths const truths(call);
  return truths.error() ? *truths.error() : Value::boolean(truths.all());
}

Value logicalOr(Call& call) {
  Truths const truths(call);
  return truths.error() ? *truths.error() : Value::boolean(truths.any());
}

Value logicalXor(Call& call) {
  Truths const truths(call);
  return truths.error() ? *truths.error() : Value::boolean(truths.isOdd());
}

Value logicalNot(Call& call) { return Value::boolean(!call.truth(0)); }
Value logicalTrue(Call& /*call*/) { return Value::boolean(true); }
Value logicalFalse(Call& /*call*/) { return Value::boolean(false); }

/// A chosen argument; one that is left out is 0.
Value choose(Call const& call, std::size_t index) {
  Value const value = call.evaluate(index);
  return value.isMissing() ? Value::number(0.0) : value;
}

/// IF where the condition is an array: each element chooses for itself.
Value chooseByElement(Call const& call, Value const& condition) {
  Evaluator& evaluator = call.evaluator();
  auto const branch = [&](std::size_t index, bool absent) {
    return call.has(index) ? evaluator.toOperand(choose(call, index), Mode::ByElement)
                           : Value::boolean(absent);
  };
  std::array const values = {condition, branch(1, true), branch(2, false)};
  return mapElements(evaluator, values, [](std::span<Value const> elements) {
    auto const truth = toTruth(elements[0]);
    return truth.isError() ? truth.error() : elements[*truth ? 1 : 2];
  });
}

/// IF(condition, then, otherwise)
Value chooseByCondition(Call& call) {
  Value const condition = call.evaluateOperand(0);
  if (condition.isArray()) {
    return chooseByElement(call, condition);
  }
  auto const truth = toTruth(condition);
  if (truth.isError()) {
    return truth.error();
  }
  std::size_t const chosen = *truth ? 1 : 2;
  return call.has(chosen) ? choose(call, chosen) : Value::boolean(*truth);
}

/// The value, or the alternative where the value is an error for which `isReplaced` holds.
template <class IsReplaced>
Value replaceErrors(Call const& call, IsReplaced const& isReplaced) {
  Value const value = call.evaluateOperand(0);
  if (!value.isArray()) {
    if (isReplaced(value)) {
      return choose(call, 1);
    }
    return value.isMissing() ? Value::number(0.0) : value;
  }
  Evaluator& evaluator = call.evaluator();
  std::array const values = {value, evaluator.toOperand(choose(call, 1), Mode::ByElement)};
  return mapElements(evaluator, values, [&](std::span<Value const> elements) {
    return elements[isReplaced(elements[0]) ? 1 : 0];
  });
}

Value ifError(Call& call) {
  return replaceErrors(call, [](Value const& value) { return value.isError(); });
}

Value ifNotAvailable(Call& call) {
  return replaceErrors(call, [](Value const& value) {
    return value.isError() && value.asError() == FormulaErrorCode::NotAvailable;
  });
}

/// LET(name, value, ..., result): gives names to values, and then the result.
Value let(Call& call) {
  std::size_t const last = call.count() - 1;
  for (std::size_t i = 0; i < last; i += 2) {
    auto const& name = call.nodeOf(i);
    if (name.kind != NodeKind::LocalName) {
      return Value::error(FormulaErrorCode::Name);
    }
    call.frame().locals[name.index] = call.evaluate(i + 1);
  }
  return choose(call, last);
}

constexpr std::array entries = {
    FunctionEntry{"AND", "a(a)", logicalAnd},
    FunctionEntry{"FALSE", "", logicalFalse},
    FunctionEntry{"IF", "x[xx]", chooseByCondition, {.returnsReference = true}},
    FunctionEntry{"IFERROR", "xx", ifError, {.returnsReference = true}},
    FunctionEntry{"IFNA", "xx", ifNotAvailable, {.returnsReference = true}},
    FunctionEntry{"LET", "xxx(xx)", let, {.returnsReference = true}},
    FunctionEntry{"NOT", "b", logicalNot},
    FunctionEntry{"OR", "a(a)", logicalOr},
    FunctionEntry{"TRUE", "", logicalTrue},
    FunctionEntry{"XOR", "a(a)", logicalXor},
};

}  // namespace

std::span<FunctionEntry const> logicalFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
