#include "ConditionalFormatters/Formats/CndFrmt_RangeUnion.h"

#include <algorithm>

#include "ConditionalFormatters/Formats/CndFrmt_SortUnique.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The first or end row of a range.
struct Edge {
  unsigned long row;
  bool isEnd;
  ColumnInterval columns;
};

/// Calls `onRows(firstRow, endRow, coverage)` for the rows between neighbouring edges, from the
/// top, where some column is covered.
template <class OnRows>
void sweep(std::vector<TableRange> const& ranges, OnRows const& onRows) {
  std::vector<Edge> edges;
  std::vector<unsigned long> borders;
  for (TableRange const& range : ranges) {
    if (!range.isEmpty()) {
      ColumnInterval const columns{range.firstColumn, range.endColumn};
      edges.push_back({range.firstRow, false, columns});
      edges.push_back({range.endRow, true, columns});
      borders.insert(borders.end(), {columns.first, columns.end});
    }
  }
  if (edges.empty()) {
    return;
  }
  std::ranges::sort(edges, {}, &Edge::row);
  sortUnique(borders);

  ColumnCoverage coverage(std::move(borders));
  unsigned long row = edges.front().row;
  for (Edge const& edge : edges) {
    if (edge.row != row && coverage.width() > 0) {
      onRows(row, edge.row, coverage);
    }
    row = edge.row;
    if (edge.isEnd) {
      coverage.remove(edge.columns);
    } else {
      coverage.add(edge.columns);
    }
  }
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

}  // namespace

RangeUnion::RangeUnion(std::vector<TableRange> const& ranges) {
  sweep(ranges, [this](unsigned long firstRow, unsigned long endRow,
                       ColumnCoverage const& coverage) {
    auto columns = coverage.list();
    if (!_bands.empty() && _bands.back().endRow == firstRow && _bands.back().columns == columns) {
      _bands.back().endRow = endRow;
    } else {
      _bands.push_back({firstRow, endRow, coverage.width(), std::move(columns)});
    }
  });
}

bool RangeUnion::contains(unsigned long row, unsigned long column) const noexcept {
  auto const band = std::ranges::upper_bound(_bands, row, {}, &Band::endRow);
  if (band == _bands.end() || row < band->firstRow) {
    return false;
  }
  auto const part = std::ranges::upper_bound(band->columns, column, {}, &ColumnInterval::end);
  return part != band->columns.end() && part->first <= column;
}

void RangeUnion::Band::appendRows(std::vector<TableRange>& ranges) const {
  for (auto row = firstRow; row < endRow; ++row) {
    for (ColumnInterval const& part : columns) {
      ranges.push_back({row, part.first, row + 1, part.end});
    }
  }
}

std::vector<TableRange> RangeUnion::cover() const {
  std::vector<TableRange> ranges;
  std::uint64_t covered = 0;  // positions of the union in the last range; 0: it may not grow
  for (Band const& band : _bands) {
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

std::uint64_t countPositions(std::vector<TableRange> const& ranges) {
  std::uint64_t count = 0;
  sweep(ranges, [&](unsigned long firstRow, unsigned long endRow, ColumnCoverage const& coverage) {
    count += std::uint64_t{coverage.width()} * (endRow - firstRow);
  });
  return count;
}

std::vector<TableRange> clip(std::vector<TableRange> const& ranges, TableRange const& bounds) {
  std::vector<TableRange> clipped;
  for (TableRange const& range : ranges) {
    auto const part = intersect(range, bounds);
    if (!part.isEmpty()) {
      clipped.push_back(part);
    }
  }
  return clipped;
}

}  // namespace Zorv::ConditionalFormatters
