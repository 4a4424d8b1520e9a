// What kinds values are of.

#include <array>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Values/Arrays.h"
#include "Formulas/Values/Cells.h"

namespace Zorv::Formulas {

namespace {

/// The number of an error's kind; `#N/A` for what is none.
Value errorType(Call& call) {
  return call[0].isError() ? Value::number(static_cast<double>(call[0].asError()))
                           : Value::error(FormulaErrorCode::NotAvailable);
}

/// The value of the cell for a reference to one cell, otherwise the argument.
Value readSingleCell(Value const& value) {
  bool const isCell = value.isReference() && value.asArea().isSingleCell();
  return isCell ? readCell(value.asArea(), 0, 0) : value;
}

/// TYPE: the number of a kind (ISO/IEC 29500-1, 18.17.7).
Value type(Call& call) {
  Value const value = readSingleCell(call[0]);
  switch (value.kind()) {
    case Value::Kind::Text:
      return Value::number(2);
    case Value::Kind::Boolean:
      return Value::number(4);
    case Value::Kind::Error:
    case Value::Kind::References:
      return Value::number(16);
    case Value::Kind::Reference:
    case Value::Kind::Array:
      return Value::number(64);
    default:
      return Value::number(1);
  }
}

/// A conversion of single values: of references to cells the first one is taken, of arrays each
/// element.
template <Value (*convert)(Value const&)>
Value convertEach(Call& call) {
  Value const& value = call[0];
  if (value.isReferences()) {
    return Value::error(FormulaErrorCode::Value);
  }
  if (value.isArray()) {
    return mapArray(call.evaluator().arena(), value.asArray(), convert);
  }
  return convert(value.isReference() ? readCell(value.asArea(), 0, 0) : value);
}

/// N: the value as a number.
Value toPlainNumber(Value const& value) {
  if (value.isNumber() || value.isError()) {
    return value;
  }
  return Value::number(value.isBoolean() && value.asBoolean() ? 1.0 : 0.0);
}

/// T: a text, or the empty one.
Value toPlainText(Value const& value) {
  return value.isText() || value.isError() ? value : Value::text({});
}

}  // namespace

std::span<FunctionEntry const> kindFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"ERROR.TYPE", "error:e", errorType,
                    "Number of an error's kind; #N/A for a value that is no error."},
      FunctionEntry{"N", "value:r", convertEach<toPlainNumber>,
                    "The value as a number: TRUE is 1, anything but numbers and errors is 0."},
      FunctionEntry{"T", "value:r", convertEach<toPlainText>,
                    "The value if it is a text or an error, otherwise an empty text."},
      FunctionEntry{
          "TYPE", "value:a", type,
          "Number of a value's kind: 1 number, 2 text, 4 truth value, 16 error, 64 array."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
