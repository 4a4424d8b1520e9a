// Choices among arguments: only the chosen one is evaluated, and a chosen reference stays one.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "Formulas/Evaluation/ByElement.h"
#include "Formulas/Evaluation/Call.h"
#include "Formulas/Evaluation/Lambda.h"
#include "Formulas/Evaluation/Operators.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;

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

/// LAMBDA(parameter, ..., body)
Value makeFunction(Call& call) { return makeLambda(call.evaluator(), call.frame(), call.node()); }

/// The values of the arguments from one on, for a choice that each element of an array makes for
/// itself; the first of them has been evaluated already.
std::span<Value> evaluateFrom(Call const& call, std::size_t first, Value const& firstValue) {
  Evaluator& evaluator = call.evaluator();
  std::span<Value> const values = evaluator.arena().makeArray<Value>(call.count() - first);
  values.front() = firstValue;
  for (std::size_t i = 1; i < values.size(); ++i) {
    values[i] = evaluator.toOperand(choose(call, first + i), Mode::ByElement);
  }
  return values;
}

Value noneChosen() { return Value::error(FormulaErrorCode::NotAvailable); }

/// Of pairs of a condition and a value, the value of the first condition that holds.
Value chooseFirstTrue(std::span<Value const> pairs) {
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    auto const truth = toTruth(pairs[i]);
    if (truth.isError() || *truth) {
      return truth.isError() ? truth.error() : pairs[i + 1];
    }
  }
  return noneChosen();
}

/// IFS(condition, value, ...)
Value chooseByConditions(Call& call) {
  for (std::size_t i = 0; i < call.count(); i += 2) {
    Value const condition = call.evaluateOperand(i);
    if (condition.isArray()) {
      return mapElements(call.evaluator(), evaluateFrom(call, i, condition), chooseFirstTrue);
    }
    auto const truth = toTruth(condition);
    if (truth.isError() || *truth) {
      return truth.isError() ? truth.error() : choose(call, i + 1);
    }
  }
  return noneChosen();
}

/// The result of the first value that equals the subject, among pairs of a value and a result that
/// a default may follow.
Value chooseFirstEqual(Evaluator& evaluator, Value const& subject, std::span<Value const> cases) {
  std::size_t i = 0;
  for (; i + 1 < cases.size(); i += 2) {
    Value const equal = applyBinary(Operator::Equal, subject, cases[i], evaluator);
    if (equal.isError() || equal.asBoolean()) {
      return equal.isError() ? equal : cases[i + 1];
    }
  }
  return i < cases.size() ? cases[i] : noneChosen();
}

/// SWITCH where the subject or a value is an array, from the case at an argument on.
Value chooseByValueOfElement(Call const& call, Value const& subject, std::size_t argument,
                             Value const& value) {
  Evaluator& evaluator = call.evaluator();
  std::span<Value const> const cases = evaluateFrom(call, argument, value);
  std::span<Value> const values = evaluator.arena().makeArray<Value>(cases.size() + 1);
  values.front() = subject;
  std::ranges::copy(cases, values.begin() + 1);
  return mapElements(evaluator, values, [&](std::span<Value const> elements) {
    return chooseFirstEqual(evaluator, elements.front(), elements.subspan(1));
  });
}

/// SWITCH(subject, value, result, ..., default)
Value chooseByValue(Call& call) {
  Value const subject = call.evaluateOperand(0);
  std::size_t i = 1;
  for (; i + 1 < call.count(); i += 2) {
    Value const value = call.evaluateOperand(i);
    if (subject.isArray() || value.isArray()) {
      return chooseByValueOfElement(call, subject, i, value);
    }
    Value const equal = applyBinary(Operator::Equal, subject, value, call.evaluator());
    if (equal.isError() || equal.asBoolean()) {
      return equal.isError() ? equal : choose(call, i + 1);
    }
  }
  return call.has(i) ? choose(call, i) : noneChosen();
}

/// Which of some choices a number means, from 1; `#VALUE!` where there is no such one.
Outcome<std::size_t> toChoice(Value const& value, std::size_t choiceCount,
                              OfficeUtils::LocaleContext const& locale) {
  auto const number = toNumber(value, locale);
  if (number.isError()) {
    return number.error().asError();
  }
  double const choice = std::trunc(*number);
  if (choice < 1.0 || choice > static_cast<double>(choiceCount)) {
    return FormulaErrorCode::Value;
  }
  return static_cast<std::size_t>(choice);
}

/// CHOOSE(number, first, second, ...)
Value chooseByNumber(Call& call) {
  Value const index = call.evaluateOperand(0);
  if (index.isArray()) {
    return mapElements(
        call.evaluator(), evaluateFrom(call, 0, index), [&](std::span<Value const> elements) {
          auto const choice = toChoice(elements[0], elements.size() - 1, call.locale());
          return choice.isError() ? choice.error() : elements[*choice];
        });
  }
  auto const choice = toChoice(index, call.count() - 1, call.locale());
  return choice.isError() ? choice.error() : choose(call, *choice);
}

constexpr FunctionTraits givesReference{.returnsReference = true};

}  // namespace

std::span<FunctionEntry const> choiceFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"CHOOSE", "index:x, value:x, (value:x)", chooseByNumber,
                    "Value at an index, from 1.", givesReference},
      FunctionEntry{"IF", "condition:x, [then:x, otherwise:x]", chooseByCondition,
                    "One of two values, by a condition.", givesReference},
      FunctionEntry{"IFERROR", "value:x, alternative:x", ifError,
                    "The value, or the alternative where the value is an error.", givesReference},
      FunctionEntry{"IFNA", "value:x, alternative:x", ifNotAvailable,
                    "The value, or the alternative where the value is #N/A.", givesReference},
      FunctionEntry{"IFS", "condition:x, value:x, (condition:x, value:x)", chooseByConditions,
                    "Value of the first condition that holds.", givesReference},
      FunctionEntry{"LAMBDA",
                    "name:x, (name:x)",
                    makeFunction,
                    "Function of its own, of parameters and an expression that uses them; to be "
                    "called, in place or by a name.",
                    {.returnsReference = true, .bindsNames = true}},
      FunctionEntry{"LET",
                    "name:x, value:x, result:x, (value:x, result:x)",
                    let,
                    "Result of an expression that uses names given to values; more pairs of names "
                    "and values may precede the result.",
                    {.returnsReference = true, .bindsNames = true}},
      FunctionEntry{"SWITCH", "subject:x, value:x, result:x, (more:x)", chooseByValue,
                    "Result of the first value that equals the subject; a single last argument is "
                    "the default.",
                    givesReference},
  };
  return entries;
}

}  // namespace Zorv::Formulas
