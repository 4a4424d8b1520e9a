#include "ConditionalFormatters/Live/CndFrmt_FewAreas.h"

#include <algorithm>
#include <functional>
#include <queue>
#include <utility>

#include <boost/sort/pdqsort/pdqsort.hpp>

#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"
#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"

namespace Zorv::ConditionalFormatters {

namespace {

TableRange hullOf(TableRange const& a, TableRange const& b) noexcept {
  return {std::min(a.firstRow, b.firstRow), std::min(a.firstColumn, b.firstColumn),
          std::max(a.endRow, b.endRow), std::max(a.endColumn, b.endColumn)};
}

/// The number of positions, as a double: a sheet's do not fit far from the end of an integer.
double sizeOf(TableRange const& area) noexcept {
  return static_cast<double>(area.endRow - area.firstRow) *
         static_cast<double>(area.endColumn - area.firstColumn);
}

/// True if an area is the one above, continued.
bool goesOn(TableRange const& above, TableRange const& area) noexcept {
  return above.endRow == area.firstRow && above.firstColumn == area.firstColumn &&
         above.endColumn == area.endColumn;
}

/// Rectangles that come band by band. One that goes on in the next band is one rectangle.
class Bands {
public:
  void add(unsigned long firstRow, unsigned long endRow,
           std::vector<ColumnInterval> const& columns) {
    std::vector<std::size_t> current;
    current.reserve(columns.size());
    for (ColumnInterval const& interval : columns) {
      current.push_back(extendOrAdd({firstRow, interval.first, endRow, interval.end}));
    }
    _previous = std::move(current);
  }

  [[nodiscard]] std::size_t count() const noexcept { return _areas.size(); }
  [[nodiscard]] std::vector<TableRange> const& get() const noexcept { return _areas; }

private:
  std::size_t extendOrAdd(TableRange const& area) {
    auto const above = std::ranges::find_if(
        _previous, [&](std::size_t index) { return goesOn(_areas[index], area); });
    if (above != _previous.end()) {
      _areas[*above].endRow = area.endRow;
      return *above;
    }
    _areas.push_back(area);
    return _areas.size() - 1;
  }

  std::vector<TableRange> _areas;
  std::vector<std::size_t> _previous;  ///< the areas of the last band
};

/// Calls `visit(firstRow, endRow, columns)` for the bands of rows that areas cut out of a sheet,
/// until it returns false.
template <class Visit>
void forEachBand(RangeIndex const& index, Visit const& visit) {
  if (index.getRanges().empty()) {
    return;
  }
  FormatCursor cursor(index);
  unsigned long row = index.getRanges().front().range.firstRow;
  unsigned long const endRow = index.getRanges()[index.getByEndRow().back()].range.endRow;
  while (row < endRow) {
    unsigned long const endOfBand = cursor.enterRow(row);
    if (!visit(row, endOfBand, cursor.listColumns())) {
      return;
    }
    row = endOfBand;
  }
}

/// Areas that a sweep down the rows has entered. The one for which a member is the least, or the
/// greatest, is on top.
template <unsigned long TableRange::*member, class Compare>
class SweptAreas {
public:
  void add(TableRange const& area) { _areas.push(area); }
  /// Leaves areas that end above a row, as far as others do not hide them.
  void leaveAbove(unsigned long row) {
    while (!_areas.empty() && _areas.top().endRow <= row) {
      _areas.pop();
    }
  }
  [[nodiscard]] bool isEmpty() const { return _areas.empty(); }
  [[nodiscard]] unsigned long top() const { return _areas.top().*member; }

private:
  struct IsBelow {
    bool operator()(TableRange const& a, TableRange const& b) const noexcept {
      return Compare()(b.*member, a.*member);
    }
  };
  std::priority_queue<TableRange, std::vector<TableRange>, IsBelow> _areas;
};

/// One area for each band, from its first column to its last, without an index of the areas.
std::vector<TableRange> findHulls(std::vector<TableRange> areas) {
  std::erase_if(areas, [](TableRange const& area) { return area.isEmpty(); });
  boost::sort::pdqsort(areas.begin(), areas.end(), [](TableRange const& a, TableRange const& b) {
    return a.firstRow < b.firstRow;
  });
  SweptAreas<&TableRange::firstColumn, std::less<>> fromLeft;
  SweptAreas<&TableRange::endColumn, std::greater<>> fromRight;
  SweptAreas<&TableRange::endRow, std::less<>> byEnd;
  std::vector<TableRange> hulls;
  unsigned long row = 0;
  for (auto next = areas.begin(); next != areas.end() || !byEnd.isEmpty();) {
    row = byEnd.isEmpty() ? next->firstRow : row;
    for (; next != areas.end() && next->firstRow == row; ++next) {
      fromLeft.add(*next);
      fromRight.add(*next);
      byEnd.add(*next);
    }
    unsigned long const end =
        next == areas.end() ? byEnd.top() : std::min(byEnd.top(), next->firstRow);
    TableRange const hull{row, fromLeft.top(), end, fromRight.top()};
    if (!hulls.empty() && goesOn(hulls.back(), hull)) {
      hulls.back().endRow = end;
    } else {
      hulls.push_back(hull);
    }
    row = end;
    fromLeft.leaveAbove(row);
    fromRight.leaveAbove(row);
    byEnd.leaveAbove(row);
  }
  return hulls;
}

/// Joins neighbours among areas that lie one below the other, and keeps apart those that would
/// enclose the most.
std::vector<TableRange> joinNeighbours(std::vector<TableRange> const& areas, std::size_t most) {
  std::vector<std::pair<double, std::size_t>> gaps;  // by what is enclosed; index of the lower one
  for (std::size_t lower = 1; lower < areas.size(); ++lower) {
    TableRange const hull = hullOf(areas[lower - 1], areas[lower]);
    gaps.emplace_back(sizeOf(hull) - sizeOf(areas[lower - 1]) - sizeOf(areas[lower]), lower);
  }
  std::size_t const kept = std::min(most - 1, gaps.size());
  std::ranges::nth_element(gaps, gaps.begin() + static_cast<std::ptrdiff_t>(kept), std::greater());
  std::vector<bool> isKept(areas.size(), false);
  for (std::size_t gap = 0; gap < kept; ++gap) {
    isKept[gaps[gap].second] = true;
  }
  std::vector<TableRange> joined;
  for (std::size_t index = 0; index < areas.size(); ++index) {
    if (joined.empty() || isKept[index]) {
      joined.push_back(areas[index]);
    } else {
      joined.back() = hullOf(joined.back(), areas[index]);
    }
  }
  return joined;
}

/// The areas as disjoint ones; more than `most` if there are too many.
std::vector<TableRange> findDisjoint(std::vector<TableRange> const& areas, std::size_t most) {
  RangeIndex const index(areas);
  Bands exact;
  forEachBand(index, [&](unsigned long firstRow, unsigned long endRow,
                         std::vector<ColumnInterval> const& columns) {
    exact.add(firstRow, endRow, columns);
    return exact.count() <= most;
  });
  return exact.get();
}

}  // namespace

std::vector<TableRange> joinIntoFew(std::vector<TableRange> const& areas, std::size_t most) {
  auto const hulls = findHulls(areas);
  // Each hull begins or ends where a disjoint area does: there are fewer than two for each of them.
  if (hulls.size() < 2 * most) {
    auto exact = findDisjoint(areas, most);
    if (exact.size() <= most) {
      return exact;
    }
  }
  return hulls.size() <= most ? hulls : joinNeighbours(hulls, most);
}

}  // namespace Zorv::ConditionalFormatters
