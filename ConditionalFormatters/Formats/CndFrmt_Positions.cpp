#include "ConditionalFormatters/Formats/CndFrmt_Positions.h"

#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"

namespace Zorv::ConditionalFormatters {

std::uint64_t countPositions(std::vector<TableRange> const& ranges) {
  RangeIndex const index(ranges);
  if (index.getRanges().empty()) {
    return 0;
  }
  FormatCursor cursor(index);
  auto const& last = index.getRanges()[index.getByEndRow().back()];
  std::uint64_t count = 0;
  for (unsigned long row = index.getRanges().front().range.firstRow; row < last.range.endRow;) {
    unsigned long const endRow = cursor.enterRow(row);
    count += std::uint64_t{cursor.getWidth()} * (endRow - row);
    row = endRow;
  }
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
