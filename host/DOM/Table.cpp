#include "DOM/Table.h"

#include <algorithm>
#include <optional>
#include <string>

#include "Utils/Exceptions.h"

namespace Zorv::DOM {

namespace {

void checkLines(char const* what, unsigned long first, unsigned long count, unsigned long length) {
  if (first > length || count > length - first) {
    throw BaseRuntimeError(std::string(what) + " " + std::to_string(first) + " to " +
                           std::to_string(first + count) + " lie outside the sheet");
  }
}

/// An end of runs behind all lines.
constexpr unsigned long endOfLines = std::max(Table::rowCount, Table::columnCount);

CellStore::Remap afterInsertion(unsigned long before, unsigned long count) {
  return {{before, 0}, {endOfLines, count}};
}

CellStore::Remap afterDeletion(unsigned long first, unsigned long count) {
  return {{first, 0}, {first + count, std::nullopt}, {endOfLines, 0 - count}};
}

CellStore::Remap afterMove(unsigned long first, unsigned long count, unsigned long before) {
  if (before <= first) {
    return {{before, 0}, {first, count}, {first + count, before - first}, {endOfLines, 0}};
  }
  return {
      {first, 0}, {first + count, before - first - count}, {before, 0 - count}, {endOfLines, 0}};
}

bool isInside(unsigned long before, unsigned long first, unsigned long count) noexcept {
  return first < before && before < first + count;
}

}  // namespace

Table::Table(UUID uuid) : _uuid(uuid), _rowIds(rowCount), _columnIds(columnCount) {}

Cell& Table::obtainCell(unsigned long row, unsigned long column) {
  checkLines("rows", row, 1, rowCount);
  checkLines("columns", column, 1, columnCount);
  return _cells.getOrCreate(row, column);
}

void Table::setValue(unsigned long row, unsigned long column, FormulaValue value) {
  obtainCell(row, column).value = std::move(value);
}

void Table::removeCell(unsigned long row, unsigned long column) {
  if (findCell(row, column) != nullptr) {
    _cells.remove(row, column);
  }
}

Cell const* Table::findCell(unsigned long row, unsigned long column) const noexcept {
  return row < rowCount && column < columnCount ? _cells.find(row, column) : nullptr;
}

CellInfo Table::getCellInfo(unsigned long row, unsigned long column) const noexcept {
  return {*this, CellIndex(RowIndex(row), ColumnIndex(column)), findCell(row, column)};
}

std::size_t Table::getCellCount() const noexcept { return _cells.size(); }

std::pair<unsigned long, unsigned long> Table::getUsedRows() const noexcept {
  return _cells.getUsedRows();
}

TableRange Table::getUsedRange() const noexcept { return _cells.getUsedRange(); }

std::pair<CellRangeIt<true>, CellRangeIt<true>> Table::getRangeIterators(
    TableRange const& range) const {
  bool const empty =
      range.isEmpty() || range.firstRow >= rowCount || range.firstColumn >= columnCount;
  auto const first = empty ? _cells.end() : _cells.lowerBound(range.firstRow, range.firstColumn);
  return {{*this, _cells, range, first}, {*this, _cells, range, _cells.end()}};
}

RowID Table::getRowID(unsigned long row) const noexcept { return RowID(_rowIds.idAt(row)); }

ColumnID Table::getColumnID(unsigned long column) const noexcept {
  return ColumnID(_columnIds.idAt(column));
}

TableRangeByID Table::toRangeByID(TableRange const& range) const {
  if (range.isEmpty()) {
    throw BaseRuntimeError("an empty range has no corners");
  }
  checkLines("rows", range.firstRow, range.endRow - range.firstRow, rowCount);
  checkLines("columns", range.firstColumn, range.endColumn - range.firstColumn, columnCount);
  return {getRowID(range.firstRow), getColumnID(range.firstColumn), getRowID(range.endRow - 1),
          getColumnID(range.endColumn - 1)};
}

void Table::insertRows(unsigned long before, unsigned long count) {
  checkLines("rows", before, count, rowCount);
  if (count == 0) {
    return;
  }
  if (getUsedRows().second > rowCount - count) {
    throw BaseRuntimeError("inserting rows would push cells off the sheet");
  }
  _cells.remapRows(afterInsertion(before, count));
  _rowIds.insert(before, count);
}

void Table::insertColumns(unsigned long before, unsigned long count) {
  checkLines("columns", before, count, columnCount);
  if (count == 0) {
    return;
  }
  auto const [begin, end] = getRangeIterators({0, columnCount - count, rowCount, columnCount});
  if (begin != end) {
    throw BaseRuntimeError("inserting columns would push cells off the sheet");
  }
  _cells.remapColumns(afterInsertion(before, count));
  _columnIds.insert(before, count);
}

void Table::deleteRows(unsigned long first, unsigned long count) {
  checkLines("rows", first, count, rowCount);
  if (count != 0) {
    _cells.remapRows(afterDeletion(first, count));
    _rowIds.remove(first, count);
  }
}

void Table::deleteColumns(unsigned long first, unsigned long count) {
  checkLines("columns", first, count, columnCount);
  if (count != 0) {
    _cells.remapColumns(afterDeletion(first, count));
    _columnIds.remove(first, count);
  }
}

void Table::moveRows(unsigned long first, unsigned long count, unsigned long before) {
  checkLines("rows", first, count, rowCount);
  checkLines("rows", before, 0, rowCount);
  if (count == 0 || before == first || isInside(before, first, count)) {
    return;
  }
  _cells.remapRows(afterMove(first, count, before));
  _rowIds.move(first, count, before);
}

void Table::moveColumns(unsigned long first, unsigned long count, unsigned long before) {
  checkLines("columns", first, count, columnCount);
  checkLines("columns", before, 0, columnCount);
  if (count == 0 || before == first || isInside(before, first, count)) {
    return;
  }
  _cells.remapColumns(afterMove(first, count, before));
  _columnIds.move(first, count, before);
}

void Table::addConditionalFormat(std::unique_ptr<ConditionalFormat const> format) {
  _conditionalFormats.push_back(std::move(format));
}

void Table::addConditionalFormat(std::vector<TableRange> const& ranges,
                                 ConditionalFormatOperator condition, UUID const& styleUUID,
                                 bool stopCalculateConditions) {
  std::vector<TableRangeByID> rangesByID;
  rangesByID.reserve(ranges.size());
  for (TableRange const& range : ranges) {
    rangesByID.push_back(toRangeByID(range));
  }
  addConditionalFormat(std::make_unique<ConditionalFormat const>(
      std::move(rangesByID), std::move(condition), styleUUID, stopCalculateConditions));
}

void Table::setConditionalFormats(LiveConditionalFormats formats) noexcept {
  _conditionalFormats = std::move(formats);
}

}  // namespace Zorv::DOM
