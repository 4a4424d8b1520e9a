#include "ConditionalFormatters/WholeTable/CndFrmt_RangeIndex.h"

#include <algorithm>
#include <limits>

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <boost/iterator/function_output_iterator.hpp>
#include <boost/sort/pdqsort/pdqsort.hpp>

namespace Zorv::ConditionalFormatters {

namespace {

template <class Value>
void sortWithoutRepeats(std::vector<Value>& values) {
  // Borders often come in order, or are few and repeated.
  boost::sort::pdqsort(values.begin(), values.end());
  values.erase(std::unique(values.begin(), values.end()), values.end());
}

/// How many borders lie at or before a position.
std::size_t countBorders(std::vector<unsigned long> const& borders,
                         unsigned long position) noexcept {
  auto const next = std::upper_bound(borders.begin(), borders.end(), position);
  return static_cast<std::size_t>(next - borders.begin());
}

std::pair<unsigned long, unsigned long> between(std::vector<unsigned long> const& borders,
                                                std::size_t number) noexcept {
  return {number == 0 ? 0 : borders[number - 1],
          number < borders.size() ? borders[number] : std::numeric_limits<unsigned long>::max()};
}

// Rows and columns as coordinates: doubles hold every one that a sheet has.
using Position = boost::geometry::model::point<double, 2, boost::geometry::cs::cartesian>;
using Positions = boost::geometry::model::box<Position>;
using Entry = std::pair<Positions, FormatNumber>;

Position makePosition(unsigned long row, unsigned long column) {
  return {static_cast<double>(row), static_cast<double>(column)};
}

Positions positionsOf(TableRange const& range) {
  return {makePosition(range.firstRow, range.firstColumn),
          makePosition(range.endRow - 1, range.endColumn - 1)};
}

}  // namespace

struct RangeIndex::Tree {
  explicit Tree(std::vector<Entry> const& all) : entries(all) {}

  boost::geometry::index::rtree<Entry, boost::geometry::index::quadratic<16>> entries;
};

RangeIndex::~RangeIndex() = default;

RangeIndex::RangeIndex(ConditionalFormatRefs const& formatRefs) {
  std::vector<Entry> entries;
  for (FormatNumber number = 0; number < formatRefs.size(); ++number) {
    for (TableRange const& range : formatRefs[number].first) {
      if (!range.isEmpty()) {
        _rowBorders.insert(_rowBorders.end(), {range.firstRow, range.endRow});
        _columnBorders.insert(_columnBorders.end(), {range.firstColumn, range.endColumn});
        entries.emplace_back(positionsOf(range), number);
      }
    }
  }
  sortWithoutRepeats(_rowBorders);
  sortWithoutRepeats(_columnBorders);
  // Given all entries at once, the tree packs them.
  _tree = std::make_unique<Tree const>(entries);
}

std::size_t RangeIndex::bandOf(unsigned long row) const noexcept {
  return countBorders(_rowBorders, row);
}

std::size_t RangeIndex::slabOf(unsigned long column) const noexcept {
  return countBorders(_columnBorders, column);
}

std::pair<unsigned long, unsigned long> RangeIndex::rowsOf(std::size_t band) const noexcept {
  return between(_rowBorders, band);
}

std::pair<unsigned long, unsigned long> RangeIndex::columnsOf(std::size_t slab) const noexcept {
  return between(_columnBorders, slab);
}

void RangeIndex::findFormats(std::size_t band, std::size_t slab, FormatNumbers& formats) const {
  formats.clear();
  auto const position = makePosition(rowsOf(band).first, columnsOf(slab).first);
  _tree->entries.query(boost::geometry::index::intersects(position),
                       boost::make_function_output_iterator(
                           [&formats](Entry const& entry) { formats.push_back(entry.second); }));
  sortWithoutRepeats(formats);
}

bool RangeIndex::holds(FormatNumber format, unsigned long row, unsigned long column) const {
  namespace index = boost::geometry::index;
  auto const isOfFormat = [format](Entry const& entry) { return entry.second == format; };
  Position const position = makePosition(row, column);
  return _tree->entries.qbegin(index::intersects(position) && index::satisfies(isOfFormat)) !=
         _tree->entries.qend();
}

FormatCursor::FormatCursor(RangeIndex const& index)
    : _index(index), _answers(index.getSlabCount()) {}

void FormatCursor::enterBand(unsigned long row) {
  for (std::size_t const slab : _knownSlabs) {
    _answers[slab].isKnown = false;
  }
  _knownSlabs.clear();
  _band = _index.bandOf(row);
  _rows = _index.rowsOf(_band);
  _columns = {0, 0};  // no slab: the next look-up enters one
}

void FormatCursor::enterSlab(unsigned long column) {
  std::size_t const slab = _index.slabOf(column);
  Answer& answer = _answers[slab];
  if (!answer.isKnown) {
    _index.findFormats(_band, slab, answer.formats);
    _knownSlabs.push_back(slab);
    answer.isKnown = true;
  }
  _columns = _index.columnsOf(slab);
  _formats = &answer.formats;
}

}  // namespace Zorv::ConditionalFormatters
