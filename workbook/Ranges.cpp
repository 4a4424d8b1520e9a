#include "workbook/Ranges.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "DOM/A1Notation.h"

namespace Zorv::Workbook {

CellIndex findBaseCell(std::vector<TableRange> const& ranges) {
  TableRange const bounds = findBounds(ranges);
  return {RowIndex(bounds.firstRow), ColumnIndex(bounds.firstColumn)};
}

TableRange findBounds(std::vector<TableRange> const& ranges) noexcept {
  TableRange bounds = ranges.empty() ? TableRange() : ranges.front();
  for (TableRange const& range : ranges) {
    bounds = {std::min(bounds.firstRow, range.firstRow),
              std::min(bounds.firstColumn, range.firstColumn),
              std::max(bounds.endRow, range.endRow), std::max(bounds.endColumn, range.endColumn)};
  }
  return bounds;
}

std::vector<TableRange> makeDisjoint(std::vector<TableRange> const& ranges, std::size_t most) {
  std::vector<TableRange> result;
  for (TableRange const& range : ranges) {
    std::vector<TableRange> rest{range};
    std::vector<TableRange> parts;
    for (TableRange const& taken : result) {
      parts.clear();
      for (TableRange const& part : rest) {
        auto const outside = subtract(part, taken);
        parts.insert(parts.end(), outside.begin(), outside.end());
      }
      rest.swap(parts);
    }
    result.insert(result.end(), rest.begin(), rest.end());
    if (result.size() > most) {
      return {};
    }
  }
  return result;
}

std::vector<TableRange> subtract(TableRange const& range, TableRange const& hole) {
  TableRange const shared = intersect(range, hole);
  if (shared.isEmpty()) {
    return {range};
  }
  std::vector<TableRange> parts{
      {range.firstRow, range.firstColumn, shared.firstRow, range.endColumn},
      {shared.endRow, range.firstColumn, range.endRow, range.endColumn},
      {shared.firstRow, range.firstColumn, shared.endRow, shared.firstColumn},
      {shared.firstRow, shared.endColumn, shared.endRow, range.endColumn}};
  std::erase_if(parts, [](TableRange const& part) { return part.isEmpty(); });
  return parts;
}

std::string toAbsoluteAddress(TableRange const& range) {
  auto const corner = [](unsigned long row, unsigned long column) {
    return DOM::A1Notation::toText(
        {{static_cast<std::uint32_t>(row), false}, {static_cast<std::uint32_t>(column), false}});
  };
  return corner(range.firstRow, range.firstColumn) + ':' +
         corner(range.endRow - 1, range.endColumn - 1);
}

}  // namespace Zorv::Workbook
