#include <algorithm>
#include <optional>

#include "Formulas/Evaluation/References.h"
#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::StructuredReference;

ListObject const* findList(Evaluator const& evaluator, Frame const& frame,
                           StructuredReference const& reference) {
  if (reference.list != noIndex) {
    return evaluator.provider().findListObject(frame.parts->texts[reference.list]);
  }
  return evaluator.provider().findListObjectAt(
      evaluator.context().getTableContext()->getDocTableIndex(), evaluator.row(),
      evaluator.column());
}

TableContext const* findTable(Evaluator const& evaluator, FormulaModel::DocTableIndex table) {
  TableContext const* const own = evaluator.context().getTableContext();
  return own->getDocTableIndex() == table ? own : evaluator.provider().findTableContextAt(table);
}

/// The index of a column among those of a list.
std::optional<unsigned long> findColumn(ListObject const& list, std::string_view name) {
  auto const found = std::ranges::find_if(
      list.columnNames, [&](std::string const& column) { return equalTexts(column, name); });
  if (found == list.columnNames.end()) {
    return std::nullopt;
  }
  return static_cast<unsigned long>(found - list.columnNames.begin());
}

/// Narrows an area to the columns that a reference names.
bool selectColumns(StepMeter& steps, ListObject const& list, Frame const& frame,
                   StructuredReference const& reference, TableRange& range) {
  if (reference.firstColumn == noIndex) {
    return true;
  }
  steps.spend(list.columnNames.size());
  auto const first = findColumn(list, frame.parts->texts[reference.firstColumn]);
  auto const last = findColumn(list, frame.parts->texts[reference.lastColumn]);
  if (!first || !last) {
    return false;
  }
  range.firstColumn = list.range.firstColumn + std::min(*first, *last);
  range.endColumn = list.range.firstColumn + std::max(*first, *last) + 1;
  return true;
}

/// Narrows an area to the rows that a reference names; those of several parts are neighbours.
bool selectRows(ListObject const& list, StructuredReference const& reference, unsigned long row,
                TableRange& range) {
  unsigned long const dataFirst = list.range.firstRow + list.headerRowCount;
  unsigned long const dataEnd = list.range.endRow - list.totalsRowCount;
  if (reference.thisRow) {
    range.firstRow = row;
    range.endRow = row + 1;
    return dataFirst <= row && row < dataEnd;
  }
  range.firstRow = reference.headers ? list.range.firstRow : reference.data ? dataFirst : dataEnd;
  range.endRow = reference.totals ? list.range.endRow : reference.data ? dataEnd : dataFirst;
  return range.firstRow < range.endRow;
}

}  // namespace

Value resolveStructuredReference(Evaluator const& evaluator, Frame const& frame,
                                 StructuredReference const& reference) {
  ListObject const* const list = findList(evaluator, frame, reference);
  if (list == nullptr) {
    return Value::error(FormulaErrorCode::Reference);
  }
  TableRange range = list->range;
  if (!selectColumns(evaluator.steps(), *list, frame, reference, range)) {
    return Value::error(FormulaErrorCode::Reference);
  }
  if (!selectRows(*list, reference, evaluator.row(), range)) {
    return Value::error(reference.thisRow ? FormulaErrorCode::Value : FormulaErrorCode::Reference);
  }
  TableContext const* const table = findTable(evaluator, list->table);
  if (table == nullptr) {
    return Value::error(FormulaErrorCode::Reference);
  }
  return Value::reference({table, static_cast<std::uint32_t>(range.firstRow),
                           static_cast<std::uint32_t>(range.firstColumn),
                           static_cast<std::uint32_t>(range.endRow),
                           static_cast<std::uint32_t>(range.endColumn)});
}

}  // namespace Zorv::Formulas
