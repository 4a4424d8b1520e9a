// Questions about values.

#include <array>
#include <cmath>

#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

/// A function that tells whether its only argument, a single value of any kind, is of some kind.
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

/// Whether the whole part is even (0) or odd (1).
Value testParity(Call const& call, double parity) {
  double const whole = std::trunc(std::abs(call.number(0)));
  return Value::boolean(std::fmod(whole, 2.0) == parity);
}

Value isEven(Call& call) { return testParity(call, 0.0); }
Value isOdd(Call& call) { return testParity(call, 1.0); }

Value notAvailable(Call& /*call*/) { return Value::error(FormulaErrorCode::NotAvailable); }

constexpr std::array entries = {
    FunctionEntry{"ISBLANK", "e", test<isBlank>},
    FunctionEntry{"ISERR", "e", test<isOtherError>},
    FunctionEntry{"ISERROR", "e", test<isError>},
    FunctionEntry{"ISEVEN", "n", isEven},
    FunctionEntry{"ISLOGICAL", "e", test<isLogical>},
    FunctionEntry{"ISNA", "e", test<isNotAvailable>},
    FunctionEntry{"ISNONTEXT", "e", test<isNoText>},
    FunctionEntry{"ISNUMBER", "e", test<isNumber>},
    FunctionEntry{"ISODD", "n", isOdd},
    FunctionEntry{"ISTEXT", "e", test<isText>},
    FunctionEntry{"NA", "", notAvailable},
};

}  // namespace

std::span<FunctionEntry const> informationFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
