#include "render/Build/TableStyles.h"

#include <algorithm>

#include <boost/container_hash/hash.hpp>

namespace Zorv::Render {

namespace {

std::vector<PictureArea> placeTables(std::span<Workbook::StyledTable const> tables,
                                     ShownLines const& rows, ShownLines const& columns) {
  std::vector<PictureArea> areas;
  for (std::size_t i = 0; i < tables.size(); ++i) {
    TableRange const& range = tables[i].range;
    areas.push_back({.rowBegin = rows.atOrAfter(range.firstRow),
                     .rowEnd = rows.atOrAfter(range.endRow),
                     .columnBegin = columns.atOrAfter(range.firstColumn),
                     .columnEnd = columns.atOrAfter(range.endColumn),
                     .index = i});
  }
  return areas;
}

/// The members of a place as bits.
unsigned toBits(Workbook::TableLine const& line) noexcept {
  unsigned bits = line.stripe;
  for (bool const flag : {line.isFirst, line.isLast, line.isHead, line.isFoot, line.beginsBody,
                          line.endsBody, line.beginsStripe, line.endsStripe}) {
    bits = bits * 2 + (flag ? 1 : 0);
  }
  return bits;
}

}  // namespace

TableStyles::TableStyles(std::span<Workbook::StyledTable const> tables, ShownLines const& rows,
                         ShownLines const& columns, DOM::CellStyle const* usual)
    : _tables(tables),
      _rows(rows),
      _columns(columns),
      _usual(usual != nullptr ? *usual : DOM::CellStyle()),
      _areas(placeTables(tables, rows, columns), columns.size()) {}

bool TableStyles::coversEmptyCells(Workbook::StyledTable const& table) noexcept {
  constexpr std::uint64_t mostPositions = 250'000;
  TableRange const& range = table.range;
  return std::uint64_t{range.endRow - range.firstRow} * (range.endColumn - range.firstColumn) <=
         mostPositions;
}

void TableStyles::advance(std::uint32_t row) {
  _row = row;
  for (PictureArea const& area : _areas.advance(row)) {
    _end = std::max(_end, area.rowEnd);
  }
}

TableStyles::Style const* TableStyles::layOver(Style const* own, std::uint32_t column) {
  PictureArea const* const area = _areas.find(column);
  if (area == nullptr) {
    return own;
  }
  Workbook::StyledTable const& table = _tables[area->index];
  Key const key{own, table.style.get(), Workbook::placeRow(table, _rows[_row].index),
                Workbook::placeColumn(table, _columns[column].index)};
  auto const [place, isNew] = _known.try_emplace(key);
  if (isNew) {
    place->second = _factory.create(Workbook::layOverTable(
        own != nullptr ? own->get() : _usual, _usual, *key.style, key.row, key.column));
  }
  return place->second.get();
}

std::size_t TableStyles::KeyHash::operator()(Key const& key) const noexcept {
  std::size_t hash = boost::hash<void const*>()(key.own);
  boost::hash_combine(hash, static_cast<void const*>(key.style));
  boost::hash_combine(hash, toBits(key.row));
  boost::hash_combine(hash, toBits(key.column));
  return hash;
}

}  // namespace Zorv::Render
