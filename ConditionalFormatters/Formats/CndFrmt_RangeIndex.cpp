#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"

#include <algorithm>
#include <limits>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>

#include "ConditionalFormatters/Formats/CndFrmt_SortUnique.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The number of borders at or before a position.
std::size_t countBorders(std::vector<unsigned long> const& borders,
                         unsigned long position) noexcept {
  auto const next = std::upper_bound(borders.begin(), borders.end(), position);
  return static_cast<std::size_t>(next - borders.begin());
}

std::pair<unsigned long, unsigned long> between(std::vector<unsigned long> const& borders,
                                                std::size_t index) noexcept {
  return {index == 0 ? 0 : borders[index - 1],
          index < borders.size() ? borders[index] : std::numeric_limits<unsigned long>::max()};
}

using Point = boost::geometry::model::point<double, 2, boost::geometry::cs::cartesian>;
using Box = boost::geometry::model::box<Point>;
using Entry = std::pair<Box, FormatIndex>;

Point makePoint(unsigned long row, unsigned long column) {
  return {static_cast<double>(row), static_cast<double>(column)};
}

Box makeBox(TableRange const& range) {
  return {makePoint(range.firstRow, range.firstColumn),
          makePoint(range.endRow - 1, range.endColumn - 1)};
}

/// Whether doubles tell a position apart from its neighbours, as they do anywhere on a sheet.
bool isExact(unsigned long row, unsigned long column) noexcept {
  return (row | column) >> std::numeric_limits<double>::digits == 0;
}

}  // namespace

struct RangeIndex::Tree {
  explicit Tree(std::vector<Entry> const& all) : entries(all) {}

  boost::geometry::index::rtree<Entry, boost::geometry::index::quadratic<16>> entries;
};

RangeIndex::~RangeIndex() = default;

RangeIndex::RangeIndex(ConditionalFormatRefs const& formatRefs) : _formatRefs(formatRefs) {
  std::vector<Entry> entries;
  for (FormatIndex format = 0; format < formatRefs.size(); ++format) {
    for (TableRange const& range : formatRefs[format].first) {
      if (!range.isEmpty()) {
        _rowBorders.insert(_rowBorders.end(), {range.firstRow, range.endRow});
        _columnBorders.insert(_columnBorders.end(), {range.firstColumn, range.endColumn});
        entries.emplace_back(makeBox(range), format);
      }
    }
  }
  sortUnique(_rowBorders);
  sortUnique(_columnBorders);
  // Given all entries at once, the tree packs them.
  _tree = std::make_unique<Tree const>(entries);
}

std::size_t RangeIndex::rowIntervalOf(unsigned long row) const noexcept {
  return countBorders(_rowBorders, row);
}

std::size_t RangeIndex::columnIntervalOf(unsigned long column) const noexcept {
  return countBorders(_columnBorders, column);
}

std::pair<unsigned long, unsigned long> RangeIndex::rowsOf(std::size_t rowInterval) const noexcept {
  return between(_rowBorders, rowInterval);
}

std::pair<unsigned long, unsigned long> RangeIndex::columnsOf(
    std::size_t columnInterval) const noexcept {
  return between(_columnBorders, columnInterval);
}

void RangeIndex::findFormats(std::size_t rowInterval, std::size_t columnInterval,
                             FormatIndices& formats) const {
  formats.clear();
  unsigned long const row = rowsOf(rowInterval).first;
  unsigned long const column = columnsOf(columnInterval).first;
  _tree->entries.query(boost::geometry::index::intersects(makePoint(row, column)),
                       boost::make_function_output_iterator(
                           [&formats](Entry const& entry) { formats.push_back(entry.second); }));
  sortUnique(formats);
  if (!isExact(row, column)) {
    std::erase_if(formats, [&](FormatIndex format) {
      return std::ranges::none_of(_formatRefs[format].first, [&](TableRange const& range) {
        return range.contains(row, column);
      });
    });
  }
}

FormatCursor::FormatCursor(RangeIndex const& index)
    : _index(index), _answers(index.getColumnIntervalCount()) {}

void FormatCursor::enterRowInterval(unsigned long row) {
  for (std::size_t const columnInterval : _knownColumns) {
    _answers[columnInterval].isKnown = false;
  }
  _knownColumns.clear();
  _rowInterval = _index.rowIntervalOf(row);
  _rows = _index.rowsOf(_rowInterval);
  _columns = {0, 0};  // empty: the next look-up enters a column interval
}

void FormatCursor::enterColumnInterval(unsigned long column) {
  std::size_t const columnInterval = _index.columnIntervalOf(column);
  Answer& answer = _answers[columnInterval];
  if (!answer.isKnown) {
    _index.findFormats(_rowInterval, columnInterval, answer.formats);
    _knownColumns.push_back(columnInterval);
    answer.isKnown = true;
  }
  _columns = _index.columnsOf(columnInterval);
  _formats = &answer.formats;
}

}  // namespace Zorv::ConditionalFormatters
