// Questions about references and sheets.

#include <array>
#include <cstddef>
#include <cstdint>
#include <set>

#include "DOM/Table.h"
#include "Formulas/Evaluation/Call.h"
#include "Formulas/Evaluation/References.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Grid.h"
#include "Formulas/Values/Arrays.h"

namespace Zorv::Formulas {

namespace {

Value isReference(Call& call) {
  return Value::boolean(call[0].isReference() || call[0].isReferences());
}

bool hasFormula(Area const& area, std::uint32_t row, std::uint32_t column) {
  DOM::Cell const* const cell =
      area.table->getTable().findCell(area.firstRow + row, area.firstColumn + column);
  return cell != nullptr && cell->hasFormula;
}

/// ISFORMULA(reference): whether cells hold formulas, each for itself.
Value isFormula(Call& call) {
  if (!call[0].isReference()) {
    return Grid::refuse(call[0]);
  }
  Area const& area = call[0].asArea();
  if (area.isSingleCell()) {
    return Value::boolean(hasFormula(area, 0, 0));
  }
  Arena& arena = call.evaluator().arena();
  // Below the last cell nothing holds a formula: what is stored of the values is enough.
  Array const& values = readArray(arena, area);
  std::span<Value> const results =
      arena.makeArray<Value>(std::size_t{values.storedRows} * values.columns);
  constexpr std::uint64_t stepsOfSearch = 4;
  call.steps().spend(stepsOfSearch * results.size());
  for (std::size_t i = 0; i < results.size(); ++i) {
    results[i] = Value::boolean(hasFormula(area, static_cast<std::uint32_t>(i / values.columns),
                                           static_cast<std::uint32_t>(i % values.columns)));
  }
  return Value::array(
      arena.make(Array{values.rows, values.columns, values.storedRows, results.data()}));
}

Value numberOfTable(TableContext const& table) {
  return Value::number(static_cast<double>(table.getDocTableIndex().get()) + 1.0);
}

/// SHEET: the number, from 1, of a reference's sheet, of a named one, or of the formula's own.
Value sheetNumber(Call& call) {
  if (!call.isGiven(0)) {
    return numberOfTable(*call.evaluator().context().getTableContext());
  }
  if (call[0].isReference()) {
    return numberOfTable(*call[0].asArea().table);
  }
  if (!call[0].isText()) {
    return Grid::refuse(call[0]);
  }
  TableContext const* const table = call.evaluator().provider().findTableContext(call[0].asText());
  return table == nullptr ? Value::error(FormulaErrorCode::NotAvailable) : numberOfTable(*table);
}

/// SHEETS: how many sheets the document has, or a reference.
Value sheetCount(Call& call) {
  if (!call.isGiven(0)) {
    return Value::number(static_cast<double>(call.evaluator().provider().getTableCount()));
  }
  auto const areas = areasOf(call[0]);
  if (areas.empty()) {
    return Grid::refuse(call[0]);
  }
  call.steps().spend(areas.size());
  std::set<TableContext const*> sheets;
  for (Area const& area : areas) {
    sheets.insert(area.table);
  }
  return Value::number(static_cast<double>(sheets.size()));
}

/// ROWS(array) and COLUMNS(array): how many it has.
template <std::uint32_t (Grid::*count)() const noexcept>
Value extent(Call& call) {
  auto const grid = Grid::of(call[0]);
  return grid ? Value::number(((*grid).*count)()) : Grid::refuse(call[0]);
}

/// AREAS(reference): of how many rectangles it is made.
Value areas(Call& call) {
  if (call[0].isReferences()) {
    return Value::number(static_cast<double>(call[0].asAreas().count));
  }
  return call[0].isReference() ? Value::number(1) : Grid::refuse(call[0]);
}

/// HYPERLINK(address, text): what the cell shows.
Value hyperlink(Call& call) { return call.isGiven(1) ? call[1] : call[0]; }

/// FORMULATEXT(reference): the texts of formulas are not kept.
Value formulaText(Call& call) {
  return call[0].isReference() ? Value::error(FormulaErrorCode::NotAvailable)
                               : Grid::refuse(call[0]);
}

}  // namespace

std::span<FunctionEntry const> referenceInformationFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"AREAS", "reference:r", areas, "Number of rectangles of a reference."},
      FunctionEntry{"COLUMNS",
                    "array:a",
                    extent<&Grid::columns>,
                    "Number of columns.",
                    {.asksPlaceOfFirst = true}},
      FunctionEntry{"FORMULATEXT", "reference:r", formulaText,
                    "Always #N/A: the texts of formulas are not kept."},
      FunctionEntry{"HYPERLINK", "address:v, [text:v]", hyperlink,
                    "Text that a link shows, or its address."},
      FunctionEntry{"ISFORMULA", "reference:r", isFormula, "TRUE for a cell with a formula."},
      FunctionEntry{"ISREF", "value:r", isReference, "TRUE for a reference."},
      FunctionEntry{
          "ROWS", "array:a", extent<&Grid::rows>, "Number of rows.", {.asksPlaceOfFirst = true}},
      FunctionEntry{
          "SHEET", "[sheet:r]", sheetNumber,
          "Number of a reference's sheet, of a sheet by its name, or of the formula's own."},
      FunctionEntry{"SHEETS", "[reference:r]", sheetCount,
                    "Number of sheets of the document, or of a reference."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
