#pragma once

#include <cstdint>
#include <vector>

#include <boost/unordered_map.hpp>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/Live/CndFrmt_AreaLog.h"
#include "ConditionalFormatters/Live/CndFrmt_LiveTable.h"
#include "ConditionalFormatters/Parallel/CndFrmt_PassResources.h"
#include "DOM/SharedStyle.h"
#include "OfficeUtils/Clock.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Looks that a LiveView has told, and where they may be out of date.
class LiveViewState {
public:
  /// Borrows the table.
  explicit LiveViewState(LiveTable const& table);

  void show(TableRange const& range);
  [[nodiscard]] TableRange const& getRange() const noexcept { return _range; }
  void forget() noexcept;
  void refresh(CellVisitor const& visitor, PassResources const& resources);

private:
  /// Look that was told of a cell. A new one is that of an untold cell.
  struct Appearance {
    DOM::SharedCellStylePtr style;
    bool hasFailed = false;

    friend bool operator==(Appearance const&, Appearance const&) noexcept = default;
  };
  /// A position as one number.
  using Key = std::uint64_t;

  /// The parts in sight of which the cells may look different from what was told.
  [[nodiscard]] std::vector<TableRange> findStale(OfficeUtils::Clock::TimePoint moment) const;
  void visitIfDifferent(ResolvedCell const& cell, CellVisitor const& visitor);

  LiveTable const& _table;
  TableRange _range;
  std::vector<TableRange> _new;  ///< parts that have come into sight
  bool _isAllNew = false;        ///< everything in sight counts as untold
  AreaLog::Version _seen;
  OfficeUtils::Clock::TimePoint _moment;        ///< of the last refresh
  boost::unordered_map<Key, Appearance> _told;  ///< without cells that look as untold ones do
};

}  // namespace Zorv::ConditionalFormatters
