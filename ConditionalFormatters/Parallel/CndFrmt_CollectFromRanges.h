#pragma once

#include <cstddef>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"
#include "DOM/RowBlocks.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Where values are collected from, and by how many threads, the caller's among them.
struct CollectedRanges {
  ValueContextProvider const& provider;
  DOM::Table const& table;
  std::vector<TableRange> const& ranges;
  unsigned threadCount;
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
    auto sink = makeSink();
    auto const [begin, end] = from.table.getRangeIterators(blocks.at(block));
    for (auto cell = begin; cell != end; ++cell) {
      DOM::CellInfo const cellInfo = cell.getCellInfo();
      sink.add(cellInfo, from.provider.getCellValue(cellInfo));
    }
    return sink.finalize();
  };
  auto const makeWorker = [&] { return collectBlock; };
  OrderedTasks(blocks.count(), from.threadCount, makeWorker, combine).run();
}

}  // namespace Zorv::ConditionalFormatters
