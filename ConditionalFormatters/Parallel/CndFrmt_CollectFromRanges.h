#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Formats/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CellWalk.h"
#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"
#include "ConditionalFormatters/Parallel/CndFrmt_PassResources.h"
#include "DOM/RowBlocks.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"

namespace Zorv::ConditionalFormatters {

/// Where values are collected from, and with which resources.
struct CollectedRanges {
  ValueContextProvider const& provider;
  DOM::Table const& table;
  std::vector<TableRange> const& ranges;
  PassResources resources;
};

/// Makes the state of a row block by a sink, and spends what that costs from the budget.
template <class MakeSink>
class BlockCollector {
public:
  BlockCollector(CollectedRanges const& from, MakeSink const& makeSink)
      : _from(from), _steps(from.resources.budget), _sink(makeSink()) {}

  void add(DOM::CellInfo const& cellInfo) {
    _steps.count();
    ++_cellCount;
    _sink.add(cellInfo, _from.provider.getCellValue(cellInfo));
  }

  [[nodiscard]] auto finalize() {
    if (_from.resources.budget != nullptr) {
      _from.resources.budget->takeMemory(_cellCount * bytesPerCell);
    }
    return _sink.finalize();
  }

private:
  /// About what the state of a cell takes while the states are combined.
  static constexpr std::uint64_t bytesPerCell = 48;

  CollectedRanges const& _from;
  StepCounter _steps;
  decltype(std::declval<MakeSink const&>()()) _sink;
  std::uint64_t _cellCount = 0;
};

/// Aggregates the values of the existing cells of the ranges, one row block after the other.
///
/// For each block a sink is made by `makeSink()`; `sink.add(cellInfo, value)` is called for each
/// cell, then `sink.finalize()`, which gives the block's state. `combine(state)` takes the states
/// over in the order of the ranges, each from top to bottom, and never by two threads at once.
/// Throws what the provider throws, for the first cell at which it does.
template <class MakeSink, class Combine>
void collectFromRanges(CollectedRanges const& from, MakeSink const& makeSink,
                       Combine const& combine) {
  BlockList blocks;
  for (TableRange const& range : from.ranges) {
    blocks.add(DOM::RowBlocks::ofCells(from.table, range));
  }
  auto const collectBlock = [&](std::size_t block) {
    BlockCollector collector(from, makeSink);
    forEachCell(from.table, blocks.at(block), true,
                [&](DOM::CellInfo const& cellInfo) { collector.add(cellInfo); });
    return collector.finalize();
  };
  auto const makeWorker = [&] { return collectBlock; };
  OrderedTasks(blocks.count(), from.resources.threadCount, makeWorker, combine).run();
}

/// True if walking range by range would meet cells many times.
[[nodiscard]] bool overlapMuch(std::vector<TableRange> const& ranges);

/// The same for sinks to which it makes no difference whether a cell in several ranges is added
/// twice or more often, and in which order cells are added. The cost is linear in cells and ranges,
/// however the ranges overlap.
template <class MakeSink, class Combine>
void collectAtMostTwice(CollectedRanges const& from, MakeSink const& makeSink,
                        Combine const& combine) {
  if (!overlapMuch(from.ranges)) {
    collectFromRanges(from, makeSink, combine);
    return;
  }
  RangeIndex const ranges(from.ranges);
  BlockList const blocks = RangesWalk::findBlocks(from.table, ranges, true);
  auto const makeWorker = [&] {
    return [&, walk = std::make_unique<RangesWalk>(from.table, ranges, true)](std::size_t block) {
      BlockCollector collector(from, makeSink);
      walk->forEachCellOf(blocks.at(block), [&](DOM::CellInfo const& cellInfo) {
        collector.add(cellInfo);
        if (walk->countRanges(cellInfo) > 1) {
          collector.add(cellInfo);
        }
      });
      return collector.finalize();
    };
  };
  OrderedTasks(blocks.count(), from.resources.threadCount, makeWorker, combine).run();
}

}  // namespace Zorv::ConditionalFormatters
