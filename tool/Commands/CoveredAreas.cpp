#include "tool/Commands/CoveredAreas.h"

#include <algorithm>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/Table.h"

namespace Zorv::Tool {

namespace {

namespace CF = ConditionalFormatters;
using DOM::Table;

/// Adds rows and columns at the end of a range, up to the end of the sheet. An empty range stays
/// empty.
TableRange extend(TableRange const& range, unsigned long count) noexcept {
  if (range.isEmpty()) {
    return range;
  }
  return {range.firstRow, range.firstColumn, std::min(range.endRow + count, Table::rowCount),
          std::min(range.endColumn + count, Table::columnCount)};
}

std::uint64_t countPositions(TableRange const& range) noexcept {
  return std::uint64_t{range.endRow - range.firstRow} * (range.endColumn - range.firstColumn);
}

bool isUnbounded(TableRange const& range) noexcept {
  // Fewer than a whole row; such a range in the last row or column is meant as it is.
  constexpr std::uint64_t few = 10'000;
  bool const reachesEnd = range.endRow == Table::rowCount || range.endColumn == Table::columnCount;
  auto const positions = countPositions(range);
  return positions > CoveredAreas::mostPositions || (reachesEnd && positions > few);
}

/// Intersections of a range with others that are not empty.
std::vector<TableRange> intersectAll(TableRange const& range,
                                     std::vector<TableRange> const& others) {
  std::vector<TableRange> parts;
  for (TableRange const& other : others) {
    if (auto const part = intersect(range, other); !part.isEmpty()) {
      parts.push_back(part);
    }
  }
  return parts;
}

/// The smallest range that holds all of some ranges. Requires at least one.
TableRange boundingRange(std::vector<TableRange> const& ranges) noexcept {
  TableRange all = ranges.front();
  for (TableRange const& range : ranges) {
    all = {std::min(all.firstRow, range.firstRow), std::min(all.firstColumn, range.firstColumn),
           std::max(all.endRow, range.endRow), std::max(all.endColumn, range.endColumn)};
  }
  return all;
}

bool isAny(TableRange const& /*range*/) noexcept { return true; }

}  // namespace

CoveredAreas::CoveredAreas(Selection const& selection, std::size_t sheet, unsigned long margin)
    : _sheet(sheet),
      _used(extend(selection.getDocument().getSheets()[sheet].table->getUsedRange(), margin)),
      _bounds(selection.getRanges(sheet)) {}

CF::TablePass CoveredAreas::makePass(std::span<Workbook::Rule const* const> rules) {
  CF::TablePass pass{.range = boundingRange(_bounds),
                     .positions = CF::TablePass::Positions::Areas,
                     .onFailure = CF::TablePass::OnFailure::Skip,
                     .areas = findAreas(rules, &isUnbounded)};
  if (CF::TableResolver::countPositions(pass) > mostPositions) {
    pass.areas = findAreas(rules, &isAny);
    if (auto const count = CF::TableResolver::countPositions(pass); count > mostPositions) {
      _mostPositionsLeftOut = std::max(_mostPositionsLeftOut, count);
      pass.positions = CF::TablePass::Positions::Existing;
    }
  }
  return pass;
}

void CoveredAreas::sayLeftOut(Report& report) const {
  if (_mostPositionsLeftOut > 0) {
    report.saySparse(_sheet, _mostPositionsLeftOut);
  } else if (!_clippedRules.empty()) {
    auto numbers = _clippedRules;
    std::ranges::sort(numbers);
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    report.sayClipped(_sheet, numbers, intersectAll(_used, _bounds));
  }
}

std::vector<TableRange> CoveredAreas::findAreas(std::span<Workbook::Rule const* const> rules,
                                                RangeTest mustClip) {
  std::vector<TableRange> areas;
  for (auto const* rule : rules) {
    bool isClipped = false;
    for (auto const& range : rule->ranges) {
      for (auto const& area : intersectAll(range, _bounds)) {
        auto const part = mustClip(area) ? intersect(area, _used) : area;
        isClipped = isClipped || part != area;
        if (!part.isEmpty()) {
          areas.push_back(part);
        }
      }
    }
    if (isClipped) {
      _clippedRules.push_back(rule->number);
    }
  }
  return areas;
}

}  // namespace Zorv::Tool
