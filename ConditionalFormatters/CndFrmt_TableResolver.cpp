#include "ConditionalFormatters/CndFrmt_TableResolver.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <utility>

#include "ConditionalFormatters/WholeTable/CndFrmt_OrderedParallel.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_StyleRunBuilder.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_TableResolverParts.h"
#include "DOM/RowBlocks.h"
#include "DOM/Table.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

using DOM::RowBlocks;
using OfficeUtils::Clock;
using OfficeUtils::PinnedMoment;
using Positions = TableResolver::Positions;

RowBlocks cutIntoBands(DOM::Table const& table, TableRange const& range, Positions positions) {
  return positions == Positions::Existing ? RowBlocks::ofCells(table, range)
                                          : RowBlocks::ofPositions(range);
}

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
  BandWorker(TableResolverParts const& parts, RowBlocks const& bands, Positions positions,
             Clock::TimePoint moment, unsigned threadCount)
      : _table(parts.getTable()),
        _bands(bands),
        _positions(positions),
        _moment(moment),
        _cells(parts, threadCount) {}

  auto operator()(std::size_t number) {
    PinnedMoment const pinned(_moment);
    Collect collect;
    std::exception_ptr failure;
    try {
      forEachCell(_table, _bands.at(number), _positions, [&](DOM::CellInfo const& cellInfo) {
        collect.add(cellInfo, _cells.resolve(cellInfo), _cells.getHolding());
      });
    } catch (...) {
      failure = std::current_exception();
    }
    return BandResult<decltype(collect.finish())>{collect.finish(), std::move(failure)};
  }

private:
  DOM::Table const& _table;
  RowBlocks const& _bands;
  Positions _positions;
  Clock::TimePoint _moment;
  CellResolver _cells;
};

/// The styles of a band's cells, in their order; they live as long as the resolver's parts.
using BandStyles = std::vector<DOM::SharedCellStylePtr const*>;

class CollectStyles {
public:
  CollectStyles() { _styles.reserve(RowBlocks::cellsPerBlock); }

  void add(DOM::CellInfo const& /*cellInfo*/, DOM::SharedCellStylePtr const& style,
           FormatNumbers const& /*holding*/) {
    _styles.push_back(&style);
  }
  [[nodiscard]] BandStyles finish() { return std::move(_styles); }

private:
  BandStyles _styles;
};

/// The same, with the formats that hold for the cells: how many for each, and all in one list.
struct BandExplanations {
  BandStyles styles;
  std::vector<std::size_t> formatCounts;
  FormatNumbers formats;
};

class CollectExplanations {
public:
  void add(DOM::CellInfo const& /*cellInfo*/, DOM::SharedCellStylePtr const& style,
           FormatNumbers const& holding) {
    _band.styles.push_back(&style);
    _band.formatCounts.push_back(holding.size());
    _band.formats.insert(_band.formats.end(), holding.begin(), holding.end());
  }
  [[nodiscard]] BandExplanations finish() { return std::move(_band); }

private:
  BandExplanations _band;
};

class CollectRuns {
public:
  void add(DOM::CellInfo const& cellInfo, DOM::SharedCellStylePtr const& style,
           FormatNumbers const& /*holding*/) {
    _runs.addCell(cellInfo.getRowIndex(), cellInfo.getColIndex(), style);
  }
  [[nodiscard]] std::vector<OpenStyleRun> finish() { return _runs.finish(); }

private:
  BandRunsBuilder _runs;
};

/// Walks a band's cells again beside their styles, which is cheaper than handing each cell from one
/// thread to another. The styles end before the cell that threw, where one did.
void visitBand(DOM::Table const& table, TableRange const& band, Positions positions,
               BandStyles const& styles, TableResolver::Visitor const& visitor) {
  auto style = styles.begin();
  forEachCell(table, band, positions, [&](DOM::CellInfo const& cellInfo) {
    if (style != styles.end()) {
      visitor(cellInfo, **style);
      ++style;
    }
  });
}

void explainBand(DOM::Table const& table, TableRange const& band, Positions positions,
                 BandExplanations const& explanations, TableResolver::Explainer const& explainer) {
  std::size_t number = 0;
  std::span<FormatNumber const> formats = explanations.formats;
  forEachCell(table, band, positions, [&](DOM::CellInfo const& cellInfo) {
    if (number < explanations.styles.size()) {
      std::size_t const count = explanations.formatCounts[number];
      explainer(cellInfo, *explanations.styles[number], formats.first(count));
      formats = formats.subspan(count);
      ++number;
    }
  });
}

template <class Collect, class Deliver>
void resolveInBands(TableResolverParts const& parts, TableRange const& range, Positions positions,
                    unsigned threadCount, Deliver const& deliver) {
  RowBlocks const bands = cutIntoBands(parts.getTable(), range, positions);
  auto const moment = Clock::readCurrent();
  auto const makeWorker = [&] {
    return BandWorker<Collect>(parts, bands, positions, moment, threadCount);
  };
  std::size_t delivered = 0;
  auto const deliverBand = [&](auto const& result) {
    deliver(bands.at(delivered++), result.collected);
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
  return CellResolver(*_parts, 1).resolve(cellInfo);
}

bool TableResolver::holds(std::size_t format, DOM::CellInfo const& cellInfo) const {
  std::optional<PinnedMoment> pinned;
  if (PinnedMoment::getCurrent() == nullptr) {
    pinned.emplace(Clock::readCurrent());
  }
  return _parts->holds(format, cellInfo);
}

void TableResolver::visit(TableRange const& range, Positions positions, Visitor const& visitor,
                          unsigned threadCount) const {
  if (threadCount <= 1) {
    PinnedMoment const pinned(Clock::readCurrent());
    CellResolver cells(*_parts, 1);
    forEachCell(_parts->getTable(), range, positions,
                [&](DOM::CellInfo const& cellInfo) { visitor(cellInfo, cells.resolve(cellInfo)); });
    return;
  }
  resolveInBands<CollectStyles>(*_parts, range, positions, threadCount,
                                [&](TableRange const& band, BandStyles const& styles) {
                                  visitBand(_parts->getTable(), band, positions, styles, visitor);
                                });
}

void TableResolver::explain(TableRange const& range, Positions positions,
                            Explainer const& explainer, unsigned threadCount) const {
  resolveInBands<CollectExplanations>(
      *_parts, range, positions, threadCount,
      [&](TableRange const& band, BandExplanations const& explanations) {
        explainBand(_parts->getTable(), band, positions, explanations, explainer);
      });
}

std::vector<StyleRun> TableResolver::resolveRuns(TableRange const& range, Positions positions,
                                                 unsigned threadCount) const {
  TableRunsBuilder runs;
  resolveInBands<CollectRuns>(*_parts, range, positions, threadCount,
                              [&](TableRange const& band, std::vector<OpenStyleRun> const& ofBand) {
                                runs.addBand(band, ofBand);
                              });
  return runs.finish();
}

}  // namespace Zorv::ConditionalFormatters
