#pragma once

#include <cstddef>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OrderedParallel.h"
#include "DOM/RowBlocks.h"
#include "DOM/Table.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Where values are collected from, and by how many threads, the caller's among them.
struct CollectedRanges {
  ValueContextProvider const& provider;
  DOM::Table const& table;
  std::vector<TableRange> const& ranges;
  unsigned threadCount;
};

/// Asks the provider for the value of each existing cell of the ranges, band by band.
///
/// The thread that has a band makes a collector by `makeCollector()`, calls
/// `collector.add(cellInfo, value)` for each cell and then `collector.finish()`, which gives what
/// is collected of the band; `deliver(collected)` takes that over: in order of the ranges, and in
/// each of rows, and never by two threads at once. Every thread sees the caller's pinned moment.
/// Throws what the provider throws, for the first cell of those at which it does.
template <class MakeCollector, class Deliver>
void collectInBands(CollectedRanges const& from, MakeCollector const& makeCollector,
                    Deliver const& deliver) {
  std::vector<TableRange> bands;
  for (TableRange const& range : from.ranges) {
    auto const bandsOfRange = DOM::RowBlocks::ofCells(from.table, range);
    for (std::size_t number = 0; number < bandsOfRange.count(); ++number) {
      bands.push_back(bandsOfRange.at(number));
    }
  }
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  auto const collectBand = [&](std::size_t number) {
    OfficeUtils::PinnedMoment const pinnedHere(moment);
    auto collector = makeCollector();
    auto const [begin, end] = from.table.getRangeIterators(bands[number]);
    for (auto cell = begin; cell != end; ++cell) {
      DOM::CellInfo const cellInfo = cell.getCellInfo();
      collector.add(cellInfo, from.provider.getCellValue(cellInfo));
    }
    return collector.finish();
  };
  auto const makeWorker = [&] { return collectBand; };
  OrderedParallel(bands.size(), from.threadCount, makeWorker, deliver).run();
}

}  // namespace Zorv::ConditionalFormatters
