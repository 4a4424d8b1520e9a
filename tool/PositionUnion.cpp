#include "tool/PositionUnion.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace Zorv::Tool {

namespace {

bool startsEarlier(TableRange const& a, TableRange const& b) noexcept {
  return a.firstRow < b.firstRow;
}

std::vector<TableRange> clip(std::vector<TableRange> const& ranges, TableRange const& bounds) {
  std::vector<TableRange> clipped;
  for (auto const& range : ranges) {
    auto const part = intersect(range, bounds);
    if (!part.isEmpty()) {
      clipped.push_back(part);
    }
  }
  std::sort(clipped.begin(), clipped.end(), startsEarlier);
  return clipped;
}

/// The smallest range that holds both.
TableRange enclose(TableRange const& a, TableRange const& b) noexcept {
  return {std::min(a.firstRow, b.firstRow), std::min(a.firstColumn, b.firstColumn),
          std::max(a.endRow, b.endRow), std::max(a.endColumn, b.endColumn)};
}

/// Whether a range that holds so many positions of a union holds few others.
bool isWellFilled(TableRange const& range, std::uint64_t count) noexcept {
  constexpr std::uint64_t leastShare = 8;
  return std::uint64_t{range.endRow - range.firstRow} * (range.endColumn - range.firstColumn) <=
         leastShare * count;
}

/// The rows at which a range begins or ends, ascending.
std::vector<unsigned long> findEdges(std::vector<TableRange> const& ranges) {
  std::vector<unsigned long> edges;
  for (auto const& range : ranges) {
    edges.push_back(range.firstRow);
    edges.push_back(range.endRow);
  }
  std::sort(edges.begin(), edges.end());
  edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
  return edges;
}

}  // namespace

TableRange extend(TableRange const& range, unsigned long count) noexcept {
  if (range.isEmpty()) {
    return range;
  }
  return {range.firstRow, range.firstColumn, std::min(range.endRow + count, DOM::Table::rowCount),
          std::min(range.endColumn + count, DOM::Table::columnCount)};
}

bool PositionUnion::Band::contains(unsigned long column) const noexcept {
  return std::any_of(columns.begin(), columns.end(), [column](Columns const& part) {
    return part.first <= column && column < part.end;
  });
}

std::uint64_t PositionUnion::Band::size() const noexcept {
  std::uint64_t width = 0;
  for (auto const& part : columns) {
    width += part.end - part.first;
  }
  return width * (endRow - firstRow);
}

TableRange PositionUnion::Band::getBounds() const noexcept {
  return {firstRow, columns.front().first, endRow, columns.back().end};
}

void PositionUnion::Band::appendRows(std::vector<TableRange>& ranges) const {
  for (auto row = firstRow; row < endRow; ++row) {
    for (auto const& part : columns) {
      ranges.push_back({row, part.first, row + 1, part.end});
    }
  }
}

PositionUnion::PositionUnion(std::vector<TableRange> const& ranges, TableRange const& bounds) {
  auto const clipped = clip(ranges, bounds);
  auto const edges = findEdges(clipped);
  std::vector<TableRange> open;  // those that reach into the band
  auto next = clipped.begin();
  for (std::size_t i = 0; i + 1 < edges.size(); ++i) {
    std::erase_if(open, [&](TableRange const& range) { return range.endRow <= edges[i]; });
    for (; next != clipped.end() && next->firstRow == edges[i]; ++next) {
      open.push_back(*next);
    }
    if (!open.empty()) {
      _bands.push_back({edges[i], edges[i + 1], joinColumns(open)});
    }
  }
}

std::vector<PositionUnion::Columns> PositionUnion::joinColumns(
    std::vector<TableRange> const& ranges) {
  std::vector<Columns> parts;
  parts.reserve(ranges.size());
  for (auto const& range : ranges) {
    parts.push_back({range.firstColumn, range.endColumn});
  }
  std::sort(parts.begin(), parts.end(),
            [](Columns const& a, Columns const& b) { return a.first < b.first; });
  std::vector<Columns> joined;
  for (auto const& part : parts) {
    if (!joined.empty() && part.first <= joined.back().end) {
      joined.back().end = std::max(joined.back().end, part.end);
    } else {
      joined.push_back(part);
    }
  }
  return joined;
}

std::uint64_t PositionUnion::size() const noexcept {
  std::uint64_t count = 0;
  for (auto const& band : _bands) {
    count += band.size();
  }
  return count;
}

std::vector<TableRange> PositionUnion::cover() const {
  std::vector<TableRange> ranges;
  std::uint64_t covered = 0;  // positions of the union in the last of them
  for (auto const& band : _bands) {
    auto const bounds = band.getBounds();
    auto const joined = ranges.empty() ? bounds : enclose(ranges.back(), bounds);
    if (covered > 0 && isWellFilled(joined, covered + band.size())) {
      ranges.back() = joined;
      covered += band.size();
    } else if (isWellFilled(bounds, band.size())) {
      ranges.push_back(bounds);
      covered = band.size();
    } else {
      band.appendRows(ranges);
      covered = 0;
    }
  }
  return ranges;
}

}  // namespace Zorv::Tool
