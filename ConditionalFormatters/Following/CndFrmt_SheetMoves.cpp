#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"

#include <algorithm>

namespace Zorv::ConditionalFormatters {

std::optional<PositionKey> SheetMoves::move(PositionKey cell) const noexcept {
  unsigned long const row = rowOfKey(cell);
  unsigned long const column = columnOfKey(cell);
  auto const rowShift = rows.runOf(row).shift;
  auto const columnShift = columns.runOf(column).shift;
  return rowShift && columnShift
             ? std::optional(positionKeyOf(row + *rowShift, column + *columnShift))
             : std::nullopt;
}

TableRange SheetMoves::move(TableRange const& range) const {
  LineInterval const movedRows = rows.move(rowIntervalOf(range));
  LineInterval const movedColumns = columns.move(columnIntervalOf(range));
  return {movedRows.first, movedColumns.first, movedRows.end, movedColumns.end};
}

void SheetMoves::appendMoved(TableRange const& area, std::vector<TableRange>& areas) const {
  auto const columnParts = columns.moveParts(columnIntervalOf(area));
  for (LineInterval const& row : rows.moveParts(rowIntervalOf(area))) {
    for (LineInterval const& column : columnParts) {
      areas.push_back({row.first, column.first, row.end, column.end});
    }
  }
}

SheetMoves& DocumentMoves::getOrCreate(DOM::Table const& table) {
  auto const found = std::ranges::find(_tables, &table, &OfTable::table);
  return found == _tables.end() ? _tables.emplace_back(OfTable{&table, {}}).moves : found->moves;
}

SheetMoves const* DocumentMoves::find(DOM::Table const& table) const noexcept {
  auto const found = std::ranges::find(_tables, &table, &OfTable::table);
  return found == _tables.end() || found->moves.isEmpty() ? nullptr : &found->moves;
}

}  // namespace Zorv::ConditionalFormatters
