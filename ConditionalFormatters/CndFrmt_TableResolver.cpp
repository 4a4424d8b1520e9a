#include "ConditionalFormatters/CndFrmt_TableResolver.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <utility>

#include "ConditionalFormatters/WholeTable/CndFrmt_OrderedParallel.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_StyleRunBuilder.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_TableResolverParts.h"
#include "DOM/Table.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

using OfficeUtils::Clock;
using OfficeUtils::PinnedMoment;
using Positions = TableResolver::Positions;

/// A range cut into bands of rows for several threads to work on.
class Bands {
public:
  /// Of existing cells nothing lies below the used range, so bands there would be empty.
  Bands(DOM::Table const& table, TableRange range, Positions positions) : _range(range) {
    if (positions == Positions::Existing) {
      TableRange const used = table.getUsedRange();
      _range.firstRow = std::max(range.firstRow, used.firstRow);
      _range.endRow = std::min(range.endRow, used.endRow);
      _width =
          std::min(range.endColumn, used.endColumn) - std::min(range.firstColumn, used.endColumn);
    } else {
      _width = range.endColumn - std::min(range.firstColumn, range.endColumn);
    }
    _height = std::max(1UL, cellsInBand / std::max(1UL, _width));
  }

  [[nodiscard]] std::size_t count() const noexcept {
    unsigned long const rows = _range.endRow - std::min(_range.firstRow, _range.endRow);
    return (rows + _height - 1) / _height;
  }

  [[nodiscard]] TableRange at(std::size_t number) const noexcept {
    TableRange band = _range;
    band.firstRow += number * _height;
    band.endRow = std::min(_range.endRow, band.firstRow + _height);
    return band;
  }

private:
  static constexpr unsigned long cellsInBand = 4096;

  TableRange _range;
  unsigned long _width = 0;
  unsigned long _height = 1;
};

/// Calls `visit(cellInfo)` for the existing cells of a range, or for all its positions, in order.
template <class Visit>
void forEachCell(DOM::Table const& table, TableRange const& range, Positions positions,
                 Visit const& visit) {
  auto [cell, end] = table.getRangeIterators(range);
  if (positions == Positions::Existing) {
    for (; cell != end; ++cell) {
      visit(cell.getCellInfo());
    }
    return;
  }
  for (unsigned long row = range.firstRow; row < range.endRow; ++row) {
    for (unsigned long column = range.firstColumn; column < range.endColumn; ++column) {
      CellIndex const index{RowIndex(row), ColumnIndex(column)};
      if (cell != end && cell.getCellInfo().getCellIndex() == index) {
        visit(cell.getCellInfo());
        ++cell;
      } else {
        visit(DOM::CellInfo(table, index, nullptr));
      }
    }
  }
}

struct ResolvedCell {
  DOM::CellInfo cellInfo;
  DOM::SharedCellStylePtr const* style;  ///< lives as long as the resolver's parts
};

/// What became of a band's cells, of those before the one that threw where one did.
template <class Collected>
struct BandResult {
  Collected collected;
  std::exception_ptr failure;
};

/// Resolves bands for one thread; `Collect` gathers what becomes of a band's cells.
template <class Collect>
class BandWorker {
public:
  BandWorker(TableResolverParts const& parts, Bands const& bands, Positions positions,
             Clock::TimePoint moment)
      : _table(parts.getTable()),
        _bands(bands),
        _positions(positions),
        _moment(moment),
        _cells(parts) {}

  auto operator()(std::size_t number) {
    PinnedMoment const pinned(_moment);
    Collect collect;
    std::exception_ptr failure;
    try {
      forEachCell(_table, _bands.at(number), _positions, [&](DOM::CellInfo const& cellInfo) {
        collect.add(cellInfo, _cells.resolve(cellInfo));
      });
    } catch (...) {
      failure = std::current_exception();
    }
    return BandResult<decltype(collect.finish())>{collect.finish(), std::move(failure)};
  }

private:
  DOM::Table const& _table;
  Bands const& _bands;
  Positions _positions;
  Clock::TimePoint _moment;
  CellResolver _cells;
};

class CollectCells {
public:
  void add(DOM::CellInfo const& cellInfo, DOM::SharedCellStylePtr const& style) {
    _cells.push_back({cellInfo, &style});
  }
  [[nodiscard]] std::vector<ResolvedCell> finish() { return std::move(_cells); }

private:
  std::vector<ResolvedCell> _cells;
};

class CollectRuns {
public:
  void add(DOM::CellInfo const& cellInfo, DOM::SharedCellStylePtr const& style) {
    _runs.addCell(cellInfo.getRowIndex(), cellInfo.getColIndex(), style);
  }
  [[nodiscard]] std::vector<StyleRun> finish() { return _runs.finish(); }

private:
  StyleRunBuilder _runs;
};

template <class Collect, class Deliver>
void resolveInBands(TableResolverParts const& parts, TableRange const& range, Positions positions,
                    unsigned threadCount, Deliver const& deliver) {
  Bands const bands(parts.getTable(), range, positions);
  auto const moment = Clock::readCurrent();
  auto const makeWorker = [&] { return BandWorker<Collect>(parts, bands, positions, moment); };
  auto const deliverBand = [&](auto const& result) {
    deliver(result.collected);
    if (result.failure) {
      std::rethrow_exception(result.failure);
    }
  };
  OrderedParallel(bands.count(), threadCount, makeWorker, deliverBand).run();
}

}  // namespace

TableResolver::TableResolver(std::unique_ptr<TableResolverParts const> parts) noexcept
    : _parts(std::move(parts)) {}
TableResolver::TableResolver(TableResolver&&) noexcept = default;
TableResolver& TableResolver::operator=(TableResolver&&) noexcept = default;
TableResolver::~TableResolver() = default;

DOM::SharedCellStylePtr TableResolver::resolve(DOM::CellInfo const& cellInfo) const {
  PinnedMoment const pinned(Clock::readCurrent());
  return CellResolver(*_parts).resolve(cellInfo);
}

void TableResolver::visit(TableRange const& range, Positions positions, Visitor const& visitor,
                          unsigned threadCount) const {
  if (threadCount <= 1) {
    PinnedMoment const pinned(Clock::readCurrent());
    CellResolver cells(*_parts);
    forEachCell(_parts->getTable(), range, positions,
                [&](DOM::CellInfo const& cellInfo) { visitor(cellInfo, cells.resolve(cellInfo)); });
    return;
  }
  resolveInBands<CollectCells>(*_parts, range, positions, threadCount,
                               [&](std::vector<ResolvedCell> const& cells) {
                                 for (ResolvedCell const& cell : cells) {
                                   visitor(cell.cellInfo, *cell.style);
                                 }
                               });
}

std::vector<StyleRun> TableResolver::resolveRuns(TableRange const& range, Positions positions,
                                                 unsigned threadCount) const {
  StyleRunBuilder runs;
  resolveInBands<CollectRuns>(
      *_parts, range, positions, threadCount,
      [&](std::vector<StyleRun> const& bandRuns) { runs.addRuns(bandRuns); });
  return runs.finish();
}

}  // namespace Zorv::ConditionalFormatters
