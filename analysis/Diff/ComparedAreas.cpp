#include "analysis/Diff/ComparedAreas.h"

#include <algorithm>
#include <cstdint>
#include <tuple>
#include <utility>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/Table.h"

namespace Zorv::Analysis {

namespace {

using Areas = std::vector<TableRange>;

constexpr std::uint64_t fewPositions = 10'000;
constexpr std::uint64_t mostPositions = 5'000'000;

constexpr TableRange wholeSheet{0, 0, DOM::Table::rowCount, DOM::Table::columnCount};

std::uint64_t countPositions(TableRange const& range) noexcept {
  return std::uint64_t{range.endRow - range.firstRow} * (range.endColumn - range.firstColumn);
}

std::uint64_t countPositions(Areas const& areas) {
  return ConditionalFormatters::TableResolver::countPositions(
      {.range = wholeSheet,
       .positions = ConditionalFormatters::TablePass::Positions::Areas,
       .areas = areas});
}

DOM::Table const& tableOf(DocumentSheet const& sheet) noexcept {
  return *sheet.document->getSheets()[sheet.sheet].table;
}

TableRange joinRanges(TableRange const& a, TableRange const& b) noexcept {
  if (a.isEmpty() || b.isEmpty()) {
    return a.isEmpty() ? b : a;
  }
  return {std::min(a.firstRow, b.firstRow), std::min(a.firstColumn, b.firstColumn),
          std::max(a.endRow, b.endRow), std::max(a.endColumn, b.endColumn)};
}

void addIfAny(TableRange const& range, Areas& areas) {
  if (!range.isEmpty()) {
    areas.push_back(range);
  }
}

void addSide(TableRange const& side, Areas& areas) {
  if (countPositions(side) <= fewPositions) {
    addIfAny(side, areas);
  }
}

/// The corners of a range, and its sides along the used rows and columns unless they are long.
void addEdges(TableRange const& range, TableRange const& used, Areas& areas) {
  auto const [firstRow, firstColumn, endRow, endColumn] = range;
  for (unsigned long const row : {firstRow, endRow - 1}) {
    for (unsigned long const column : {firstColumn, endColumn - 1}) {
      areas.push_back({row, column, row + 1, column + 1});
    }
    addSide(intersect(range, {row, used.firstColumn, row + 1, used.endColumn}), areas);
  }
  for (unsigned long const column : {firstColumn, endColumn - 1}) {
    addSide(intersect(range, {used.firstRow, column, used.endRow, column + 1}), areas);
  }
}

Areas listRuleRanges(DocumentSheet const& first, DocumentSheet const& second) {
  Areas ranges;
  for (DocumentSheet const& sheet : {first, second}) {
    auto const rules = sheet.document->getRulesOfSheet(sheet.sheet);
    for (Workbook::Rule const& rule : rules) {
      for (TableRange const& range : rule.ranges) {
        addIfAny(range, ranges);
      }
    }
  }
  auto const key = [](TableRange const& range) {
    return std::tuple(range.firstRow, range.firstColumn, range.endRow, range.endColumn);
  };
  std::ranges::sort(ranges, {}, key);
  ranges.erase(std::unique(ranges.begin(), ranges.end()), ranges.end());
  return ranges;
}

/// The existing cells of a range, neighbours in a row as one area.
void addExistingCells(DOM::Table const& table, TableRange const& range, Areas& areas) {
  auto const [begin, end] = table.getRangeIterators(range);
  for (auto cell = begin; cell != end; ++cell) {
    auto const row = cell.getCellInfo().getRowIndex();
    auto const column = cell.getCellInfo().getColIndex();
    bool const goesOn = !areas.empty() && areas.back().firstRow == row &&
                        areas.back().endRow == row + 1 && areas.back().endColumn == column;
    if (goesOn) {
      areas.back().endColumn = column + 1;
    } else {
      areas.push_back({row, column, row + 1, column + 1});
    }
  }
}

}  // namespace

std::vector<TableRange> findComparedAreas(DocumentSheet const& first, DocumentSheet const& second) {
  TableRange const used = joinRanges(tableOf(first).getUsedRange(), tableOf(second).getUsedRange());
  Areas small;
  Areas large;
  for (TableRange const& range : listRuleRanges(first, second)) {
    if (countPositions(range) <= fewPositions) {
      small.push_back(range);
    } else {
      addEdges(range, used, small);
      addIfAny(intersect(range, used), large);
    }
  }
  Areas areas = small;
  areas.insert(areas.end(), large.begin(), large.end());
  if (countPositions(areas) <= mostPositions) {
    return areas;
  }
  TableRange bounds;
  for (TableRange const& range : large) {
    bounds = joinRanges(bounds, range);
  }
  areas = std::move(small);
  addExistingCells(tableOf(first), bounds, areas);
  addExistingCells(tableOf(second), bounds, areas);
  return areas;
}

}  // namespace Zorv::Analysis
