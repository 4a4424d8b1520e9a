#include "visuals/Prepare/NumberStatistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CellWalk.h"
#include "visuals/Draw/ShareOf.h"

namespace Zorv::Visuals {

NumberStatistics::NumberStatistics(Source const& source, bool withPercentiles) {
  using ConditionalFormatters::RangesWalk;
  ConditionalFormatters::RangeIndex const ranges(source.ranges);
  auto const blocks = RangesWalk::findBlocks(source.table, ranges, true);
  RangesWalk walk(source.table, ranges, true);
  StepCounter steps(source.budget);
  for (std::size_t block = 0; block < blocks.count(); ++block) {
    std::size_t const countBefore = _numbers.size();
    walk.forEachCellOf(blocks.at(block), [&](DOM::CellInfo const& cellInfo) {
      steps.count();
      if (auto const number = findNumber(source.provider.getCellValue(cellInfo))) {
        add(*number, withPercentiles);
      }
    });
    if (source.budget != nullptr) {
      source.budget->takeMemory((_numbers.size() - countBefore) * sizeof(double));
    }
  }
}

void NumberStatistics::add(double number, bool withPercentiles) {
  _lowest = _count == 0 ? number : std::min(_lowest, number);
  _highest = _count == 0 ? number : std::max(_highest, number);
  ++_count;
  if (withPercentiles) {
    _numbers.push_back(number);
  }
}

double NumberStatistics::findPercentile(double percentile) {
  if (_numbers.empty()) {
    return 0;
  }
  constexpr double highest = 100;
  double const rank =
      std::clamp(percentile, 0.0, highest) * static_cast<double>(_numbers.size() - 1) / highest;
  auto const below = _numbers.begin() + static_cast<std::ptrdiff_t>(rank);
  std::nth_element(_numbers.begin(), below, _numbers.end());
  double const share = rank - std::floor(rank);
  if (share == 0) {
    return *below;
  }
  double const above = *std::min_element(below + 1, _numbers.end());
  return interpolate(*below, above, share);
}

}  // namespace Zorv::Visuals
