// Questions about values.

#include <array>
#include <cmath>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

/// A function that tests the kind of its only argument.
template <bool (*isOfKind)(Value const&)>
Value test(Call& call) {
  return Value::boolean(isOfKind(call[0]));
}

bool isBlank(Value const& value) { return value.kind() == Value::Kind::Empty; }
bool isNumber(Value const& value) { return value.isNumber(); }
bool isText(Value const& value) { return value.isText(); }
bool isNoText(Value const& value) { return !value.isText(); }
bool isLogical(Value const& value) { return value.isBoolean(); }
bool isError(Value const& value) { return value.isError(); }
bool isNotAvailable(Value const& value) {
  return value.isError() && value.asError() == FormulaErrorCode::NotAvailable;
}
bool isOtherError(Value const& value) { return value.isError() && !isNotAvailable(value); }

/// Tests that the whole part is even (0) or odd (1).
Value testParity(Call const& call, double parity) {
  double const whole = std::trunc(std::abs(call.number(0)));
  return Value::boolean(std::fmod(whole, 2.0) == parity);
}

Value isEven(Call& call) { return testParity(call, 0.0); }
Value isOdd(Call& call) { return testParity(call, 1.0); }

Value notAvailable(Call& /*call*/) { return Value::error(FormulaErrorCode::NotAvailable); }

}  // namespace

std::span<FunctionEntry const> informationFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"ISBLANK", "value:e", test<isBlank>, "TRUE for an empty cell."},
      FunctionEntry{"ISERR", "value:e", test<isOtherError>, "TRUE for an error other than #N/A."},
      FunctionEntry{"ISERROR", "value:e", test<isError>, "TRUE for an error."},
      FunctionEntry{"ISEVEN", "number:n", isEven, "TRUE for a number whose whole part is even."},
      FunctionEntry{"ISLOGICAL", "value:e", test<isLogical>, "TRUE for a truth value."},
      FunctionEntry{"ISNA", "value:e", test<isNotAvailable>, "TRUE for the error #N/A."},
      FunctionEntry{"ISNONTEXT", "value:e", test<isNoText>, "TRUE for a value that is no text."},
      FunctionEntry{"ISNUMBER", "value:e", test<isNumber>, "TRUE for a number."},
      FunctionEntry{"ISODD", "number:n", isOdd, "TRUE for a number whose whole part is odd."},
      FunctionEntry{"ISTEXT", "value:e", test<isText>, "TRUE for a text."},
      FunctionEntry{"NA", "", notAvailable, "The error #N/A."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
