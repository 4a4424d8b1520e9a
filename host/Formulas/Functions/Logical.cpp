// Truth values.

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Values/Coercion.h"
#include "Formulas/Values/Elements.h"

namespace Zorv::Formulas {

namespace {

/// The truth values among the arguments of AND, OR and XOR. In ranges, numbers and truth values
/// count, texts and empties do not; a single value is converted.
class Truths {
public:
  explicit Truths(Call const& call) {
    for (Value const& argument : call.arguments()) {
      if (_error) {
        return;
      }
      argument.isSingle() ? takeSingle(argument) : takeElements(call.steps(), argument);
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

  void takeElements(StepMeter& steps, Value const& argument) {
    forEachElement(steps, argument, [this](Value const& element, std::uint64_t times) {
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

}  // namespace

std::span<FunctionEntry const> logicalFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"AND", "condition:a, (condition:a)", logicalAnd,
                    "TRUE where all conditions hold."},
      FunctionEntry{"FALSE", "", logicalFalse, "The truth value FALSE."},
      FunctionEntry{"NOT", "condition:b", logicalNot, "Opposite of a truth value."},
      FunctionEntry{"OR", "condition:a, (condition:a)", logicalOr,
                    "TRUE where at least one condition holds."},
      FunctionEntry{"TRUE", "", logicalTrue, "The truth value TRUE."},
      FunctionEntry{"XOR", "condition:a, (condition:a)", logicalXor,
                    "TRUE where an odd number of conditions hold."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
