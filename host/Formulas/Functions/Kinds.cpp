// What kinds values are of.

#include <array>

#include "Formulas/Evaluation/Arrays.h"
#include "Formulas/Evaluation/Cells.h"
#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

/// The number of an error's kind; `#N/A` for what is none.
Value errorType(Call& call) {
  return call[0].isError() ? Value::number(static_cast<double>(call[0].asError()))
                           : Value::error(FormulaErrorCode::NotAvailable);
}

/// What stands for an argument: the cell of a reference to one, otherwise the argument.
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

/// N: a number, or what stands for one.
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

constexpr std::array entries = {
    FunctionEntry{"ERROR.TYPE", "e", errorType},
    FunctionEntry{"N", "r", convertEach<toPlainNumber>},
    FunctionEntry{"T", "r", convertEach<toPlainText>},
    FunctionEntry{"TYPE", "a", type},
};

}  // namespace

std::span<FunctionEntry const> kindFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
