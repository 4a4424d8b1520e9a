#include "visuals/Prepare/NumberStatistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <memory>
#include <utility>

#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CellWalk.h"
#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"
#include "Utils/WorkBudget.h"
#include "visuals/Draw/ShareOf.h"

namespace Zorv::Visuals {

using ConditionalFormatters::RangeIndex;
using ConditionalFormatters::RangesWalk;

/// Reads row blocks for one thread.
class NumberStatistics::BlockReader {
public:
  BlockReader(Source const& source, RangeIndex const& ranges, bool withPercentiles)
      : _source(source),
        _keepsNumbers(withPercentiles),
        _walk(source.table, ranges, true),
        _steps(source.resources.budget) {}

  [[nodiscard]] Block read(TableRange const& rows) {
    Block block;
    _numbers.clear();
    _walk.forEachCellOf(rows, [&](DOM::CellInfo const& cellInfo) {
      _steps.count();
      if (auto const number = findNumber(_source.provider.getCellValue(cellInfo))) {
        add(block, *number);
      }
    });
    if (_source.resources.budget != nullptr) {
      _source.resources.budget->takeMemory(_numbers.size() * sizeof(double));
    }
    block.numbers.assign(_numbers.begin(), _numbers.end());  // takes no more than they need
    return block;
  }

private:
  void add(Block& block, double number) {
    ++block.count;
    block.lowest = std::min(block.lowest, number);
    block.highest = std::max(block.highest, number);
    if (_keepsNumbers) {
      _numbers.push_back(number);
    }
  }

  Source const& _source;
  bool _keepsNumbers;
  RangesWalk _walk;
  StepCounter _steps;
  std::vector<double> _numbers;  ///< of the current block
};

NumberStatistics::NumberStatistics(Source const& source, bool withPercentiles) {
  RangeIndex const ranges(source.ranges);
  auto const blocks = RangesWalk::findBlocks(source.table, ranges, true);
  auto const makeWorker = [&] {
    return [&blocks, reader = std::make_unique<BlockReader>(source, ranges, withPercentiles)](
               std::size_t block) { return reader->read(blocks.at(block)); };
  };
  ConditionalFormatters::OrderedTasks(blocks.count(), source.resources.threadCount, makeWorker,
                                      [this](Block& block) { add(block); })
      .run();
}

void NumberStatistics::add(Block& block) {
  _count += block.count;
  _lowest = std::min(_lowest, block.lowest);
  _highest = std::max(_highest, block.highest);
  _numbers.add(std::move(block.numbers));
}

double NumberStatistics::findPercentile(double percentile) const {
  if (_numbers.count() == 0) {
    return 0;
  }
  constexpr double highest = 100;
  double const rank =
      std::clamp(percentile, 0.0, highest) * static_cast<double>(_numbers.count() - 1) / highest;
  auto const [below, above] = _numbers.select(static_cast<std::size_t>(rank), _lowest, _highest);
  return interpolate(below, above, rank - std::floor(rank));
}

}  // namespace Zorv::Visuals
