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
    if (!isEmpty(part)) {
      clipped.push_back(part);
    }
  }
  std::sort(clipped.begin(), clipped.end(), startsEarlier);
  return clipped;
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

TableRange intersect(TableRange const& a, TableRange const& b) noexcept {
  TableRange part{std::max(a.firstRow, b.firstRow), std::max(a.firstColumn, b.firstColumn),
                  std::min(a.endRow, b.endRow), std::min(a.endColumn, b.endColumn)};
  part.endRow = std::max(part.endRow, part.firstRow);
  part.endColumn = std::max(part.endColumn, part.firstColumn);
  return part;
}

bool isEmpty(TableRange const& range) noexcept {
  return range.firstRow == range.endRow || range.firstColumn == range.endColumn;
}

TableRange extend(TableRange const& range, unsigned long count) noexcept {
  if (isEmpty(range)) {
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
    for (auto const& columns : band.columns) {
      count += std::uint64_t{band.endRow - band.firstRow} * (columns.end - columns.first);
    }
  }
  return count;
}

}  // namespace Zorv::Tool
