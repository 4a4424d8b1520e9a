#pragma once

#include <cstdint>
#include <memory>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

class LiveViewState;

/// The part of a table that a window shows: tells exactly the cells that look different from what
/// it told of them last. There may be any number of views of a resolver.
///
/// A cell of which nothing was told, such as one that comes into sight, counts as a cell without a
/// style. A failure is an appearance, too: a cell that begins to fail is told, and one that stops.
///
/// Lifetime: borrows the resolver's table: valid as long as the resolver, or the one that it was
/// moved to. Threads: for one thread at a time, while no change is applied; views of one resolver
/// may be used by several threads. Memory: follows the cells in sight that have a style.
class CNDFRMT_EXPORT LiveView {
public:
  /// Shows nothing yet.
  explicit LiveView(LiveResolver const& resolver);
  LiveView(LiveView&& other) noexcept;
  LiveView& operator=(LiveView&& other) noexcept;
  LiveView(LiveView const&) = delete;
  LiveView& operator=(LiveView const&) = delete;
  ~LiveView();

  /// Shows another range, or one at another place. What was told of cells that stay in sight is
  /// kept; cells that leave it are forgotten. Visits nothing.
  void show(TableRange const& range);

  /// The range that is shown.
  [[nodiscard]] TableRange const& getRange() const noexcept;

  /// Forgets what was told, as for a window that is painted anew.
  void forget() noexcept;

  /// Visits the cells that look different from what was told last: after a change, after show(), or
  /// when time has passed; row by row, each row from the left. A cell that failed is visited with
  /// its failure and without a style.
  ///
  /// What the visitor throws, and what ends a pass that skips failures, reaches the caller; cells
  /// before that count as told, the others are visited by the next call.
  /// Cost: that of asking about the positions in sight that changed areas and new parts hold.
  /// `threadCount`: see TablePass; `budget`: what the work may cost, borrowed; null for no limits.
  void refresh(CellVisitor const& visitor, unsigned threadCount = 1, WorkBudget* budget = nullptr);

private:
  std::unique_ptr<LiveViewState> _state;
};

}  // namespace Zorv::ConditionalFormatters
