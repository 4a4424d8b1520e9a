#include "ConditionalFormatters/Live/CndFrmt_LiveViewState.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include "ConditionalFormatters/Formats/CndFrmt_Positions.h"
#include "ConditionalFormatters/Live/CndFrmt_FewAreas.h"
#include "ConditionalFormatters/Live/CndFrmt_ReachedCells.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_ResolvePass.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr unsigned columnBits = 32;
constexpr std::uint64_t columnMask = (std::uint64_t{1} << columnBits) - 1;

/// Appends the parts of a range that another one does not hold.
void appendDifference(TableRange const& range, TableRange const& other,
                      std::vector<TableRange>& parts) {
  TableRange const common = intersect(range, other);
  if (common.isEmpty()) {
    parts.push_back(range);
    return;
  }
  for (TableRange const& part :
       {TableRange{range.firstRow, range.firstColumn, common.firstRow, range.endColumn},
        TableRange{common.endRow, range.firstColumn, range.endRow, range.endColumn},
        TableRange{common.firstRow, range.firstColumn, common.endRow, common.firstColumn},
        TableRange{common.firstRow, common.endColumn, common.endRow, range.endColumn}}) {
    if (!part.isEmpty()) {
      parts.push_back(part);
    }
  }
}

}  // namespace

LiveViewState::LiveViewState(LiveTable const& table)
    : _table(table),
      _seen(table.getLog().getVersion()),
      _moment(OfficeUtils::PinnedMoment::readMoment()) {}

void LiveViewState::show(TableRange const& range) {
  constexpr std::size_t mostParts = 16;
  std::vector<TableRange> parts = _new;
  appendDifference(range, _range, parts);
  _new = joinIntoFew(clip(parts, range), mostParts);
  _range = range;
  for (auto told = _told.begin(); told != _told.end();) {
    bool const isInSight = range.contains(told->first >> columnBits, told->first & columnMask);
    told = isInSight ? std::next(told) : _told.erase(told);
  }
}

void LiveViewState::forget() noexcept {
  _told.clear();
  _isAllNew = true;
}

void LiveViewState::refresh(CellVisitor const& visitor, PassResources const& resources) {
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  AreaLog::Version const version = _table.getLog().getVersion();
  TablePass const pass{.range = _range,
                       .positions = TablePass::Positions::Areas,
                       .threadCount = resources.threadCount,
                       .onFailure = TablePass::OnFailure::Skip,
                       .areas = findStale(moment),
                       .budget = resources.budget};
  if (!pass.areas.empty()) {
    resolveCells(*_table.getPrepared(), pass,
                 CellVisitor([&](ResolvedCell const& cell) { visitIfDifferent(cell, visitor); }));
  }
  _new.clear();
  _isAllNew = false;
  _seen = version;
  _moment = moment;
}

std::vector<TableRange> LiveViewState::findStale(OfficeUtils::Clock::TimePoint moment) const {
  ReachedAreas reached{_new, {}, {}};
  if (_isAllNew || !_table.getLog().appendSince(_seen, reached)) {
    reached.areas = {_range};
  }
  _table.appendChangesOfTime(_moment, moment, reached.areas);
  appendAll(findReachedCells(*_table.getPrepared(), reached, _range), reached.areas);
  return clip(reached.areas, _range);
}

void LiveViewState::visitIfDifferent(ResolvedCell const& cell, CellVisitor const& visitor) {
  Key const key = Key{cell.cellInfo.getRowIndex()} << columnBits | cell.cellInfo.getColIndex();
  Appearance const now{cell.failure != nullptr ? nullptr : cell.style, cell.failure != nullptr};
  auto const known = _told.find(key);
  if (now == (known == _told.end() ? Appearance() : known->second)) {
    return;
  }
  // The place is made first: what the visitor was called for cannot fail to be noted.
  auto const place = known == _told.end() ? _told.emplace(key, Appearance()).first : known;
  visitor(cell);
  if (now == Appearance()) {
    _told.erase(place);
  } else {
    place->second = now;
  }
}

}  // namespace Zorv::ConditionalFormatters
