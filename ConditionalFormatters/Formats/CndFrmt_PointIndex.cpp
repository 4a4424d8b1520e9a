#include "ConditionalFormatters/Formats/CndFrmt_PointIndex.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Zorv::ConditionalFormatters {

PointIndex::PointIndex(std::vector<TableRange> ranges)
    : _ranges(std::move(ranges)), _leafCount(std::bit_ceil(_ranges.size())) {
  std::ranges::sort(_ranges, {}, &TableRange::firstRow);
  _endRows.resize(2 * _leafCount, 0);
  for (std::size_t range = 0; range < _ranges.size(); ++range) {
    _endRows[_leafCount + range] = _ranges[range].endRow;
  }
  for (std::size_t node = _leafCount; node-- > 1;) {
    _endRows[node] = std::max(_endRows[2 * node], _endRows[2 * node + 1]);
  }
}

bool PointIndex::contains(unsigned long row, unsigned long column) const noexcept {
  return contains({1, 0, _leafCount}, row, column);
}

bool PointIndex::contains(Node const& node, unsigned long row,
                          unsigned long column) const noexcept {
  if (node.firstLeaf >= _ranges.size() || _ranges[node.firstLeaf].firstRow > row ||
      _endRows[node.index] <= row) {
    return false;
  }
  if (node.leafCount == 1) {
    return _ranges[node.firstLeaf].contains(row, column);
  }
  std::size_t const half = node.leafCount / 2;
  return contains({2 * node.index, node.firstLeaf, half}, row, column) ||
         contains({2 * node.index + 1, node.firstLeaf + half, half}, row, column);
}

}  // namespace Zorv::ConditionalFormatters
