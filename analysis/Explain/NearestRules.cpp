#include "analysis/Explain/NearestRules.h"

#include <algorithm>

namespace Zorv::Analysis {

namespace {

/// Positions between a position and a half-open interval that is not empty; 0 inside it, 1 beside
/// it.
unsigned long distance(unsigned long position, unsigned long first, unsigned long end) noexcept {
  return position < first ? first - position : position < end ? 0 : position - end + 1;
}

unsigned long distanceOf(NearbyRule const& rule) noexcept { return rule.rows + rule.columns; }

}  // namespace

std::optional<NearbyRule> findNearestRange(Workbook::Rule const& rule, CellIndex cell) {
  std::optional<NearbyRule> nearest;
  for (TableRange const& range : rule.ranges) {
    NearbyRule const candidate{
        .rule = &rule,
        .range = range,
        .rows = distance(cell.getRow().get(), range.firstRow, range.endRow),
        .columns = distance(cell.getColumn().get(), range.firstColumn, range.endColumn)};
    if (!nearest || distanceOf(candidate) < distanceOf(*nearest)) {
      nearest = candidate;
    }
  }
  return nearest;
}

std::vector<NearbyRule> findNearestRules(std::span<Workbook::Rule const* const> rules,
                                         CellIndex cell, std::size_t mostRules) {
  std::vector<NearbyRule> nearest;
  for (auto const* rule : rules) {
    if (auto const range = findNearestRange(*rule, cell)) {
      nearest.push_back(*range);
    }
  }
  std::ranges::stable_sort(nearest, {}, distanceOf);
  nearest.resize(std::min(nearest.size(), mostRules));
  return nearest;
}

}  // namespace Zorv::Analysis
