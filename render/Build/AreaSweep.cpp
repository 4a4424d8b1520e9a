#include "render/Build/AreaSweep.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace Zorv::Render {

namespace {

/// The columns that areas occupy in the row that is looked at. Its intervals do not overlap.
class OccupiedColumns {
public:
  /// Occupies the columns of an area if all of them are free in its first row. Each interval that
  /// is met is either the last one or removed.
  bool take(PictureArea const& area) {
    auto next = _intervals.upper_bound(area.columnBegin);
    if (next != _intervals.begin() && std::prev(next)->second.columnEnd > area.columnBegin) {
      --next;
    }
    while (next != _intervals.end() && next->first < area.columnEnd) {
      if (next->second.rowEnd > area.rowBegin) {
        return false;
      }
      next = _intervals.erase(next);
    }
    _intervals[area.columnBegin] = {area.columnEnd, area.rowEnd};
    return true;
  }

private:
  struct End {
    std::uint32_t columnEnd;
    std::uint32_t rowEnd;
  };

  std::map<std::uint32_t, End> _intervals;  ///< by first column
};

}  // namespace

AreaSweep::AreaSweep(std::vector<PictureArea> areas, std::uint32_t columnCount)
    : _byColumn(columnCount) {
  std::erase_if(areas, [](PictureArea const& area) { return area.isEmpty(); });
  std::ranges::sort(areas, {}, [](PictureArea const& area) {
    return std::tuple(area.rowBegin, area.columnBegin, area.index);
  });
  OccupiedColumns occupied;
  for (PictureArea const& area : areas) {
    if (occupied.take(area)) {
      _areas.push_back(area);
    } else {
      ++_overlapCount;
    }
  }
}

std::span<PictureArea const> AreaSweep::advance(std::uint32_t row) {
  _row = row;
  std::size_t const first = _next;
  for (; _next < _areas.size() && _areas[_next].rowBegin <= row; ++_next) {
    PictureArea const& area = _areas[_next];
    std::fill(_byColumn.begin() + area.columnBegin, _byColumn.begin() + area.columnEnd, _next + 1);
  }
  return std::span(_areas).subspan(first, _next - first);
}

}  // namespace Zorv::Render
