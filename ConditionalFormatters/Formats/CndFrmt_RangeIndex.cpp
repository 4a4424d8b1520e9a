#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"

#include <algorithm>
#include <limits>
#include <numeric>
#include <tuple>

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

std::vector<FormatRange> listRanges(ConditionalFormatRefs const& formatRefs) {
  std::vector<FormatRange> ranges;
  for (FormatIndex format = 0; format < formatRefs.size(); ++format) {
    for (TableRange const& range : formatRefs[format].first) {
      ranges.push_back({range, format});
    }
  }
  return ranges;
}

std::vector<FormatRange> toFormatRanges(std::vector<TableRange> const& ranges) {
  std::vector<FormatRange> formatRanges;
  formatRanges.reserve(ranges.size());
  for (TableRange const& range : ranges) {
    formatRanges.push_back({range, 0});
  }
  return formatRanges;
}

}  // namespace

RangeIndex::RangeIndex(std::vector<FormatRange> ranges) : _ranges(std::move(ranges)) {
  std::erase_if(_ranges, [](FormatRange const& entry) { return entry.range.isEmpty(); });
  std::ranges::sort(_ranges, {}, [](FormatRange const& entry) {
    return std::tuple(entry.range.firstRow, entry.format);
  });
  _byEndRow.resize(_ranges.size());
  std::iota(_byEndRow.begin(), _byEndRow.end(), std::size_t{0});
  // Formats leave a column in the opposite order, so that each is the last of its list.
  std::ranges::sort(_byEndRow, {}, [this](std::size_t index) {
    return std::tuple(_ranges[index].range.endRow, ~_ranges[index].format);
  });
  for (auto const& [range, format] : _ranges) {
    _rowBorders.insert(_rowBorders.end(), {range.firstRow, range.endRow});
    _columnBorders.insert(_columnBorders.end(), {range.firstColumn, range.endColumn});
  }
  sortUnique(_rowBorders);
  sortUnique(_columnBorders);
}

RangeIndex::RangeIndex(ConditionalFormatRefs const& formatRefs)
    : RangeIndex(listRanges(formatRefs)) {}

RangeIndex::RangeIndex(std::vector<TableRange> const& ranges)
    : RangeIndex(toFormatRanges(ranges)) {}

std::size_t RangeIndex::columnIntervalOf(unsigned long column) const noexcept {
  return countBorders(_columnBorders, column);
}

std::pair<unsigned long, unsigned long> RangeIndex::rowsAround(unsigned long row) const noexcept {
  return between(_rowBorders, countBorders(_rowBorders, row));
}

std::pair<unsigned long, unsigned long> RangeIndex::columnsOf(
    std::size_t columnInterval) const noexcept {
  return between(_columnBorders, columnInterval);
}

}  // namespace Zorv::ConditionalFormatters
