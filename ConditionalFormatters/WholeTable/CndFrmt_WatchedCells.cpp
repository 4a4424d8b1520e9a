#include "ConditionalFormatters/WholeTable/CndFrmt_WatchedCells.h"

#include <algorithm>

#include "ConditionalFormatters/Formats/CndFrmt_Positions.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The parts of ranges that lie in some areas; none if it would take long to find them.
std::vector<TableRange> findAskedParts(std::vector<TableRange> const& ranges,
                                       std::span<TableRange const> areas) {
  constexpr std::size_t fewPairs = 65'536;
  std::vector<TableRange> parts;
  if (areas.size() <= fewPairs / std::max<std::size_t>(1, ranges.size())) {
    for (TableRange const& area : areas) {
      auto const ofArea = clip(ranges, area);
      parts.insert(parts.end(), ofArea.begin(), ofArea.end());
    }
  }
  return parts;
}

/// The existing cells of ranges; none if there are more than `most`.
std::vector<DOM::CellInfo> listFewCells(DOM::Table const& table,
                                        std::vector<TableRange> const& ranges, std::size_t most) {
  std::vector<DOM::CellInfo> cells;
  for (TableRange const& range : ranges) {
    auto [cell, end] = table.getRangeIterators(range);
    for (; cell != end; ++cell) {
      if (cells.size() == most) {
        return {};
      }
      cells.push_back(cell.getCellInfo());
    }
  }
  return cells;
}

}  // namespace

std::unique_ptr<WatchedCells const> WatchedCells::find(ValueContextProvider const& provider,
                                                       DOM::Table const& table,
                                                       std::vector<TableRange> const& ranges,
                                                       std::span<TableRange const> areas) {
  std::size_t const most = std::min(mostCells, table.getCellCount() / leastOthers);
  auto const cells = listFewCells(table, findAskedParts(ranges, areas), most);
  if (cells.empty()) {
    return nullptr;
  }
  std::unique_ptr<WatchedCells> watched(new WatchedCells(cells.size()));
  try {
    for (DOM::CellInfo const& cellInfo : cells) {
      if (!watched->add(cellInfo.getCellIndex(), provider.getCellValue(cellInfo))) {
        return nullptr;
      }
    }
  } catch (...) {
    return nullptr;
  }
  return watched;
}

RepeatedAmongWatched WatchedCells::findRepeated(std::vector<std::uint32_t> const& counts) const {
  RepeatedAmongWatched result;
  for (Watched const& watched : _cells) {
    auto const row = static_cast<std::uint32_t>(watched.cell.getRow().get());
    auto const column = static_cast<std::uint32_t>(watched.cell.getColumn().get());
    result.known.insert(row, column);
    if (counts[watched.value] > 1) {
      result.repeated.insert(row, column);
    }
  }
  return result;
}

bool WatchedCells::add(CellIndex cell, FormulaValue const& value) {
  if (!isComparable(value)) {
    return true;
  }
  auto const index = _values.insert(value);
  if (index == WatchedValues::none) {
    return false;
  }
  _cells.push_back({cell, index});
  return true;
}

}  // namespace Zorv::ConditionalFormatters
