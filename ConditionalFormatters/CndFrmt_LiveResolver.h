#pragma once

#include <chrono>
#include <cstddef>
#include <initializer_list>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_CellExplanation.h"
#include "ConditionalFormatters/CndFrmt_Change.h"
#include "ConditionalFormatters/CndFrmt_ChangeChecks.h"
#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/CndFrmt_StyleRun.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "OfficeUtils/Clock.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

class LiveTable;

/// Resolver of a table of a document that is being edited. Answers what a TableResolver that is
/// made this moment would, the same objects, at the cost of what has changed.
///
/// The host tells each change after its own data are up to date, and before it asks again. What was
/// prepared for conditions is kept, but for those that a change reaches: directly, or through the
/// references of their formulas, also into other tables.
///
/// Dates and times follow the clock without being told: each call reads it anew.
///
/// Lifetime: made by ConditionalFormattingPropsCalculator::follow(). Borrows the calculator's
/// provider, the styles and the table, which must outlive it. Between a change of the table's
/// formats and the call of apply() that tells it, the resolver may only be destroyed. Styles that
/// it returned may outlive everything.
///
/// Threads: const operations may run concurrently, as far as the provider may; the others need
/// exclusive access.
class CNDFRMT_EXPORT LiveResolver {
public:
  LiveResolver(LiveResolver const&) = delete;
  LiveResolver& operator=(LiveResolver const&) = delete;
  /// Views of a moved resolver go on.
  LiveResolver(LiveResolver&& other) noexcept;
  LiveResolver& operator=(LiveResolver&& other) noexcept;
  ~LiveResolver();

  /// Follows changes of any tables. Gives a few disjoint areas outside which no cell of the table
  /// looks different from before, ordered by rows; time that has passed since the last call counts
  /// as a change. Without changes it follows the clock alone.
  ///
  /// Throws what the host throws, and std::bad_alloc. Then everything that was prepared is
  /// forgotten and is prepared again when it is asked for, so that all answers are right; the areas
  /// of the next call are the whole sheet.
  /// Cost: that of the formats that a change reaches, and microseconds for each reference of the
  /// others. A change of rows, columns or formats of the table itself makes its formats ready anew.
  std::vector<TableRange> apply(std::span<Change const> changes);
  /// The same for changes in braces.
  std::vector<TableRange> apply(std::initializer_list<Change> changes) {
    return apply(std::span(changes.begin(), changes.size()));
  }

  /// The moment at which cells may look different though nothing changes: call apply({}) then. For
  /// conditions on dates the next midnight of the document's time zone; for those on the time of
  /// day, or on chance, the next full second. None if time changes nothing. Counted from the last
  /// call of apply(), so that it may have passed.
  [[nodiscard]] std::optional<OfficeUtils::Clock::TimePoint> nextChange() const;

  /// Prepares operands of whole ranges so that they follow changes, for about the time that is
  /// given and a few milliseconds more at most: means, rankings and repeated values. For idle
  /// moments, again and again while it returns true: there is more to do. Without it, such operands
  /// are found by a walk over their ranges after each change that reaches them.
  /// Throws as apply() does, with the same consequences.
  bool prepareSome(std::chrono::microseconds budget);

  /// From now on, searches for changes that the host does not tell: each call of apply() compares
  /// some cells with what plain operators say of them, and with what they said before. If it finds
  /// something, it reports it, prepares everything anew, and gives the whole sheet as the area.
  ///
  /// For tests of hosts: each call costs what ConditionalFormattingPropsCalculator::resolve() costs
  /// for those cells, twice.
  void check(ChangeChecks checks);

  /// A resolver of the table as it is, for all that TableResolver offers. Good until the next
  /// change.
  [[nodiscard]] TableResolver current() const;

  /// See TableResolver::resolve().
  [[nodiscard]] DOM::SharedCellStylePtr resolve(DOM::CellInfo const& cellInfo) const {
    return current().resolve(cellInfo);
  }
  /// See TableResolver::holds().
  [[nodiscard]] bool holds(std::size_t format, DOM::CellInfo const& cellInfo) const {
    return current().holds(format, cellInfo);
  }
  /// See TableResolver::visit().
  void visit(TablePass const& pass, CellVisitor const& visitor) const {
    current().visit(pass, visitor);
  }
  /// See TableResolver::explain().
  [[nodiscard]] CellExplanation explain(DOM::CellInfo const& cellInfo) const {
    return current().explain(cellInfo);
  }
  /// See TableResolver::resolveRuns().
  [[nodiscard]] std::vector<StyleRun> resolveRuns(TablePass const& pass) const {
    return current().resolveRuns(pass);
  }

private:
  friend class ConditionalFormattingPropsCalculator;
  friend class LiveView;
  explicit LiveResolver(std::unique_ptr<LiveTable> table) noexcept;

  std::unique_ptr<LiveTable> _table;
};

}  // namespace Zorv::ConditionalFormatters
