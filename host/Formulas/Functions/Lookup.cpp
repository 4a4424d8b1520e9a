// Positions of cells.

#include <array>
#include <cstdint>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Evaluation/Evaluator.h"
#include "Formulas/Functions/Families.h"

namespace Zorv::Formulas {

namespace {

/// The numbers from one on, down a column or along a row; a single one is no array.
Value makeSeries(Evaluator& evaluator, std::uint32_t first, std::uint32_t count, bool isColumn) {
  if (count == 1) {
    return Value::number(first);
  }
  std::span<Value> const values = evaluator.arena().makeArray<Value>(count);
  for (std::uint32_t i = 0; i < count; ++i) {
    values[i] = Value::number(first + i);
  }
  std::uint32_t const rows = isColumn ? count : 1;
  return Value::array(
      evaluator.arena().make(Array{rows, isColumn ? 1 : count, rows, values.data()}));
}

/// ROW(reference): the numbers of its rows; without one, that of the formula's cell.
Value row(Call& call) {
  Evaluator& evaluator = call.evaluator();
  if (!call.isGiven(0)) {
    return Value::number(evaluator.row() + 1);
  }
  if (!call[0].isReference()) {
    return call[0].isError() ? call[0] : Value::error(FormulaErrorCode::Value);
  }
  Area const& area = call[0].asArea();
  return makeSeries(evaluator, area.firstRow + 1, area.height(), true);
}

Value column(Call& call) {
  Evaluator& evaluator = call.evaluator();
  if (!call.isGiven(0)) {
    return Value::number(evaluator.column() + 1);
  }
  if (!call[0].isReference()) {
    return call[0].isError() ? call[0] : Value::error(FormulaErrorCode::Value);
  }
  Area const& area = call[0].asArea();
  return makeSeries(evaluator, area.firstColumn + 1, area.width(), false);
}

}  // namespace

std::span<FunctionEntry const> lookupFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"COLUMN",
                    "[reference:r]",
                    column,
                    "Number of a reference's first column, or of the formula's own.",
                    {.asksPosition = true, .asksPlaceOfFirst = true}},
      FunctionEntry{"ROW",
                    "[reference:r]",
                    row,
                    "Number of a reference's first row, or of the formula's own.",
                    {.asksPosition = true, .asksPlaceOfFirst = true}},
  };
  return entries;
}

}  // namespace Zorv::Formulas
