#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_Change.h"
#include "ConditionalFormatters/CndFrmt_ChangeChecks.h"
#include "ConditionalFormatters/Live/CndFrmt_AreaLog.h"
#include "ConditionalFormatters/Live/CndFrmt_ChangeChecker.h"
#include "ConditionalFormatters/Live/CndFrmt_FollowedFormats.h"
#include "ConditionalFormatters/Live/CndFrmt_LiveSources.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "OfficeUtils/Clock.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A table that is prepared once and follows its changes, behind LiveResolver.
///
/// Const members may run concurrently; the others need exclusive access.
class LiveTable {
public:
  /// Throws where a resolver cannot be made.
  explicit LiveTable(LiveSources const& sources);

  [[nodiscard]] DOM::Table const& getTable() const noexcept { return _sources.table; }

  /// The table as passes use it. Made again if a change could not be followed; throws what that
  /// throws.
  [[nodiscard]] std::shared_ptr<PreparedTable const> getPrepared() const;

  /// See LiveResolver::apply().
  std::vector<TableRange> apply(std::span<Change const> changes);

  /// See LiveResolver::prepareSome().
  bool prepareSome(std::chrono::microseconds budget);

  /// See LiveResolver::nextChange().
  [[nodiscard]] std::optional<OfficeUtils::Clock::TimePoint> nextChange() const;

  /// Appends the ranges of the formats that time alone may have changed between two moments.
  void appendChangesOfTime(OfficeUtils::Clock::TimePoint from, OfficeUtils::Clock::TimePoint to,
                           std::vector<TableRange>& areas) const;

  [[nodiscard]] AreaLog const& getLog() const noexcept { return _log; }

  /// See LiveResolver::check().
  void check(ChangeChecks checks) { _checker.emplace(_sources, std::move(checks)); }

private:
  [[nodiscard]] FollowedFormats& getFormats() const;
  ReachedAreas follow(std::span<Change const> changes);
  std::vector<TableRange> followAll(std::span<Change const> changes);
  /// Makes everything again, whatever has changed.
  std::vector<TableRange> startAnew();
  /// Forgets everything; the next that asks makes it again.
  void forget() noexcept;

  LiveSources _sources;
  mutable std::recursive_mutex _creation;
  Lazy<std::shared_ptr<FollowedFormats>> _formats;
  bool _isLost = false;  ///< a change was not followed, and the host not told what it reached
  OfficeUtils::Clock::TimePoint _moment;  ///< of the last apply()
  AreaLog _log;
  std::optional<ChangeChecker> _checker;
};

}  // namespace Zorv::ConditionalFormatters
