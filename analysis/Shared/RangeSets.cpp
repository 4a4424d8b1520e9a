#include "analysis/Shared/RangeSets.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <tuple>
#include <utility>

#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

/// Half-open interval of columns.
struct Interval {
  unsigned long begin = 0;
  unsigned long end = 0;

  friend bool operator==(Interval const&, Interval const&) noexcept = default;
};

/// A range that may go on in the next band.
struct OpenRange {
  Interval columns;
  unsigned long firstRow = 0;
};

TableRange transpose(TableRange const& range) noexcept {
  return {range.firstColumn, range.firstRow, range.endColumn, range.endRow};
}

RangeSet transpose(RangeSet ranges) {
  for (TableRange& range : ranges) {
    range = transpose(range);
  }
  return ranges;
}

/// Part of a range, and how many ranges of a set it was already compared with.
struct Piece {
  TableRange range;
  std::size_t compared = 0;
};

/// The comparisons of two ranges that a search may make.
class Comparisons {
public:
  Comparisons(StepCounter& counter, std::uint64_t most) noexcept : _counter(counter), _left(most) {}

  /// False if none is left.
  bool take() {
    if (_left == 0) {
      return false;
    }
    --_left;
    _counter.count();
    return true;
  }

private:
  StepCounter& _counter;
  std::uint64_t _left;
};

/// Cuts off what the next range of the set covers; false if none of them covers anything of it, or
/// no comparison is left.
bool cutOff(RangeSet const& outer, Piece piece, std::vector<Piece>& pieces,
            Comparisons& comparisons) {
  for (std::size_t at = piece.compared; at < outer.size(); ++at) {
    if (!comparisons.take()) {
      return false;
    }
    if (!intersect(outer[at], piece.range).isEmpty()) {
      for (TableRange const& rest : Workbook::subtract(piece.range, outer[at])) {
        pieces.push_back({rest, at + 1});
      }
      return true;
    }
  }
  return false;
}

/// True if every position of a range is in the set.
bool coversRange(RangeSet const& outer, TableRange const& inner, Comparisons& comparisons) {
  std::vector<Piece> pieces;
  if (!inner.isEmpty()) {
    pieces.push_back({inner});
  }
  while (!pieces.empty()) {
    Piece const piece = pieces.back();
    pieces.pop_back();
    if (!cutOff(outer, piece, pieces, comparisons)) {
      return false;
    }
  }
  return true;
}

/// The columns of some ranges as intervals that neither overlap nor touch, ascending.
std::vector<Interval> joinColumns(std::vector<TableRange> const& ranges) {
  std::vector<Interval> intervals;
  intervals.reserve(ranges.size());
  for (TableRange const& range : ranges) {
    intervals.push_back({range.firstColumn, range.endColumn});
  }
  std::ranges::sort(intervals, {}, &Interval::begin);
  std::vector<Interval> joined;
  for (Interval const& interval : intervals) {
    if (!joined.empty() && interval.begin <= joined.back().end) {
      joined.back().end = std::max(joined.back().end, interval.end);
    } else {
      joined.push_back(interval);
    }
  }
  return joined;
}

/// Sweep from the first row to the last over bands of rows in which the same ranges lie. An
/// interval of columns that the next band has too goes on as one range.
class RowSweep {
public:
  RowSweep(RangeSet ranges, StepCounter& counter) : _ranges(std::move(ranges)), _counter(counter) {
    std::ranges::sort(_ranges, {}, &TableRange::firstRow);
  }

  [[nodiscard]] RangeSet run() {
    for (unsigned long row = nextFirstRow(); row != noRow;) {
      startRanges(row);
      goOn(row, joinColumns(_active));
      row = _active.empty() ? nextFirstRow() : findBandEnd();
    }
    return std::move(_result);
  }

private:
  static constexpr unsigned long noRow = std::numeric_limits<unsigned long>::max();

  [[nodiscard]] unsigned long nextFirstRow() const noexcept {
    return _next < _ranges.size() ? _ranges[_next].firstRow : noRow;
  }

  void startRanges(unsigned long row) {
    std::erase_if(_active, [row](TableRange const& range) { return range.endRow <= row; });
    for (; nextFirstRow() == row; ++_next) {
      _active.push_back(_ranges[_next]);
    }
    _counter.count(_active.size() + 1);
  }

  [[nodiscard]] unsigned long findBandEnd() const noexcept {
    unsigned long end = nextFirstRow();
    for (TableRange const& range : _active) {
      end = std::min(end, range.endRow);
    }
    return end;
  }

  /// Ends the open ranges that have no interval of the same columns in this band, and opens those
  /// that are new. Both lists ascend.
  void goOn(unsigned long row, std::vector<Interval> const& intervals) {
    std::vector<OpenRange> open;
    auto before = _open.begin();
    for (Interval const& interval : intervals) {
      for (; before != _open.end() && before->columns.begin < interval.begin; ++before) {
        close(*before, row);
      }
      if (before != _open.end() && before->columns == interval) {
        open.push_back(*before++);
      } else {
        open.push_back({interval, row});
      }
    }
    std::for_each(before, _open.end(), [&](OpenRange const& range) { close(range, row); });
    _open = std::move(open);
  }

  void close(OpenRange const& range, unsigned long row) {
    _result.push_back({range.firstRow, range.columns.begin, row, range.columns.end});
  }

  RangeSet _ranges;
  StepCounter& _counter;
  std::size_t _next = 0;  ///< of the ranges, the first that has not started
  RangeSet _active;
  std::vector<OpenRange> _open;
  RangeSet _result;
};

/// The ranges that lie in no other one. Quadratic, so for few ranges only.
RangeSet dropContained(RangeSet const& ranges) {
  RangeSet kept;
  for (std::size_t at = 0; at < ranges.size(); ++at) {
    TableRange const& range = ranges[at];
    bool const isContained = [&] {
      for (std::size_t other = 0; other < ranges.size(); ++other) {
        bool const isInside = other != at && intersect(ranges[other], range) == range;
        if (isInside && (ranges[other] != range || other < at)) {
          return true;
        }
      }
      return false;
    }();
    if (!isContained) {
      kept.push_back(range);
    }
  }
  return kept;
}

}  // namespace

bool overlaps(RangeSet const& a, RangeSet const& b, StepCounter& counter) {
  return std::ranges::any_of(a, [&](TableRange const& range) {
    counter.count(b.size());
    return std::ranges::any_of(
        b, [&](TableRange const& other) { return !intersect(range, other).isEmpty(); });
  });
}

bool coversPart(RangeSet const& outer, RangeSet const& inner, RangeSet const& part,
                StepCounter& counter) {
  Comparisons comparisons(counter, WorkBudget::unlimited);
  return std::ranges::all_of(inner, [&](TableRange const& range) {
    counter.count(part.size());
    return std::ranges::all_of(part, [&](TableRange const& other) {
      return coversRange(outer, intersect(range, other), comparisons);
    });
  });
}

bool covers(RangeSet const& outer, RangeSet const& inner, StepCounter& counter,
            std::uint64_t mostComparisons) {
  Comparisons comparisons(counter, mostComparisons);
  return std::ranges::all_of(
      inner, [&](TableRange const& range) { return coversRange(outer, range, comparisons); });
}

RangeSet unite(RangeSet const& ranges, StepCounter& counter) {
  RangeSet best = RowSweep(ranges, counter).run();
  if (RangeSet byColumns = transpose(RowSweep(transpose(ranges), counter).run());
      byColumns.size() < best.size()) {
    best = std::move(byColumns);
  }
  constexpr std::size_t few = 64;
  if (ranges.size() <= few) {
    if (RangeSet given = dropContained(ranges); given.size() < best.size()) {
      best = std::move(given);
    }
  }
  std::ranges::sort(best, {}, [](TableRange const& range) {
    return std::tuple(range.firstRow, range.firstColumn);
  });
  return best;
}

}  // namespace Zorv::Analysis
