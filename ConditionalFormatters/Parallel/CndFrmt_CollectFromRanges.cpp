#include "ConditionalFormatters/Parallel/CndFrmt_CollectFromRanges.h"

#include "ConditionalFormatters/Formats/CndFrmt_Positions.h"

namespace Zorv::ConditionalFormatters {

bool overlapMuch(std::vector<TableRange> const& ranges) {
  // A few overlaps cost less than to find out about them.
  constexpr std::size_t fewRanges = 4;
  constexpr std::uint64_t much = 2;
  if (ranges.size() <= fewRanges) {
    return false;
  }
  std::uint64_t sum = 0;
  for (TableRange const& range : ranges) {
    sum += range.isEmpty() ? 0
                           : std::uint64_t{range.endRow - range.firstRow} *
                                 (range.endColumn - range.firstColumn);
  }
  return sum / much > countPositions(ranges);
}

}  // namespace Zorv::ConditionalFormatters
