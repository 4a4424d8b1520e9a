#include "render/Build/CellRows.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace Zorv::Render {

namespace {

std::vector<PictureArea> placeMerged(PictureParts const& parts) {
  std::vector<PictureArea> areas;
  auto const& ranges = parts.sheet.layout.mergedRanges;
  for (std::size_t i = 0; i < ranges.size(); ++i) {
    TableRange const part = intersect(ranges[i], parts.range);
    if (!part.isEmpty()) {
      areas.push_back({.rowBegin = parts.rows.atOrAfter(part.firstRow),
                       .rowEnd = parts.rows.atOrAfter(part.endRow),
                       .columnBegin = parts.columns.atOrAfter(part.firstColumn),
                       .columnEnd = parts.columns.atOrAfter(part.endColumn),
                       .index = i});
    }
  }
  return areas;
}

constexpr unsigned long none = std::numeric_limits<unsigned long>::max();

}  // namespace

CellRows::CellRows(PictureParts const& parts, bool fillsRows)
    : _parts(parts),
      _fillsRows(fillsRows),
      _merged(placeMerged(parts), parts.columns.size()),
      _tables(parts.sheet.styledTables, parts.rows, parts.columns, parts.usual),
      _cell(parts.sheet.table->getRangeIterators(parts.range).first),
      _cellsEnd(parts.sheet.table->getRangeIterators(parts.range).second),
      _decided(parts.resolution.positions.begin()) {}

std::vector<PlacedCell> const& CellRows::advance(std::uint32_t row) {
  _placed.clear();
  unsigned long const tableRow = _parts.rows[row].index;
  auto const merged = _merged.advance(row);
  _tables.advance(row);
  auto const decidedEnd = _parts.resolution.positions.end();
  while (_cell != _cellsEnd && _cell.getCellInfo().getRowIndex() < tableRow) {
    ++_cell;
  }
  while (_decided != decidedEnd && _decided->row < tableRow) {
    ++_decided;
  }
  for (;;) {
    bool const hasCell = _cell != _cellsEnd && _cell.getCellInfo().getRowIndex() == tableRow;
    bool const hasDecided = _decided != decidedEnd && _decided->row == tableRow;
    unsigned long const ofCell = hasCell ? _cell.getCellInfo().getColIndex() : none;
    unsigned long const ofDecided = hasDecided ? _decided->column : none;
    unsigned long const column = std::min(ofCell, ofDecided);
    if (column == none) {
      break;
    }
    add(column, ofCell == column ? _cell.getCellInfo().getCell() : nullptr,
        ofDecided == column ? &*_decided : nullptr, row);
    if (ofCell == column) {
      ++_cell;
    }
    if (ofDecided == column) {
      ++_decided;
    }
  }
  if (!merged.empty()) {
    for (PictureArea const& area : merged) {
      addMerged(area);
    }
    std::ranges::sort(_placed, {}, &PlacedCell::column);
  }
  if (_fillsRows || _tables.isInTables()) {
    addMissing(row);
  }
  return _placed;
}

void CellRows::add(unsigned long column, DOM::Cell const* cell, DecidedPosition const* decided,
                   std::uint32_t row) {
  auto const place = _parts.columns.find(column);
  if (place && _merged.find(*place) == nullptr) {
    _placed.push_back({.column = *place,
                       .cell = cell,
                       .decided = decided,
                       .style = findStyle(cell, row, *place)});
  }
}

/// A merged cell has the value and the styles of its first position, seen or not.
void CellRows::addMerged(PictureArea const& area) {
  TableRange const& range = _parts.sheet.layout.mergedRanges[area.index];
  DOM::Cell const* const cell = _parts.sheet.table->findCell(range.firstRow, range.firstColumn);
  _placed.push_back({.column = area.columnBegin,
                     .cell = cell,
                     .decided = _parts.resolution.find(range.firstRow, range.firstColumn),
                     .style = findStyle(cell, area.rowBegin, area.columnBegin),
                     .merged = &area});
}

void CellRows::addMissing(std::uint32_t row) {
  _withMissing.clear();
  auto next = _placed.begin();
  for (std::uint32_t column = 0; column < _parts.columns.size(); ++column) {
    if (next != _placed.end() && next->column == column) {
      _withMissing.push_back(*next++);
    } else if (_merged.find(column) == nullptr && (_fillsRows || _tables.covers(column))) {
      _withMissing.push_back({.column = column, .style = findStyle(nullptr, row, column)});
    }
  }
  std::swap(_placed, _withMissing);
}

/// A cell without a style of its own has the document's; a position without a cell that of its row,
/// else of its column. The style of a table lies below it.
Looks::Style const* CellRows::findStyle(DOM::Cell const* cell, std::uint32_t row,
                                        std::uint32_t column) {
  Looks::Style const* const ofRow = _parts.rows[row].style;
  Looks::Style const* const ofLine = ofRow != nullptr ? ofRow : _parts.columns[column].style;
  return _tables.layOver(cell != nullptr ? cell->style.get() : ofLine, column);
}

}  // namespace Zorv::Render
