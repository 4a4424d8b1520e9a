#include "workbook/Recalculation/PlacedFormula.h"

namespace Zorv::Workbook {

namespace {

int distance(unsigned long from, unsigned long to) noexcept {
  return static_cast<int>(to) - static_cast<int>(from);
}

}  // namespace

Placement findPlacement(Document const& document, DocumentContextProvider const& provider,
                        FormulaSource const& source, FormulaCell const& cell) {
  auto const indices = source.isArray
                           ? boost::make_optional(FormulaModel::ArrayFormulaIndices{0, 0})
                           : boost::optional<FormulaModel::ArrayFormulaIndices>();
  DOM::Table const& table = *document.getSheets()[cell.sheet].table;
  CellIndex const place = cell.getPlace();
  CellIndex const seenFrom = source.isArray ? source.place : place;
  return {distance(source.place.getColumn().get(), seenFrom.getColumn().get()),
          distance(source.place.getRow().get(), seenFrom.getRow().get()),
          Formulas::Context(provider.getTableContext(table), place.getRow(), place.getColumn(),
                            indices, table.getRowID(cell.row), table.getColumnID(cell.column))};
}

}  // namespace Zorv::Workbook
