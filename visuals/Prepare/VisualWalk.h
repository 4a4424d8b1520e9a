#pragma once

#include <exception>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"
#include "Utils/WorkBudget.h"
#include "visuals/CellVisuals.h"
#include "visuals/Prepare/FormulaEvaluator.h"
#include "visuals/Prepare/PassBounds.h"
#include "visuals/Prepare/PreparedVisuals.h"

namespace Zorv::Visuals {

/// Draws the visuals of one cell after the other, for one pass and one thread; fastest in row
/// order.
class VisualWalk {
public:
  /// Borrows the visuals, their thresholds and the pass's budget.
  VisualWalk(PreparedVisuals const& visuals, PassBounds& bounds,
             ConditionalFormatters::TablePass const& pass, OfficeUtils::Clock::TimePoint moment);

  /// The visuals of a cell; none if it could not be resolved. Throws what the budget throws, and
  /// std::bad_alloc; the failure of a format, if the pass stops at failures. Valid until the next
  /// call.
  [[nodiscard]] CellVisuals const& draw(ConditionalFormatters::ResolvedCell const& cell);

  /// The first failure for the cell that was drawn last; null if there is none.
  [[nodiscard]] VisualFailure const* getFailure() const noexcept {
    return _failure.exception ? &_failure : nullptr;
  }

private:
  /// State of a format's thresholds, and of its own condition.
  struct State {
    Bounds const* bounds = nullptr;  ///< null before the first cell needs them
    std::exception_ptr limit;        ///< the last limit of the engine that the condition met
    unsigned limitCount = 0;         ///< how often it met one
  };

  void drawFormats(ConditionalFormatters::ResolvedCell const& cell);
  void drawFormat(std::size_t format, CellIndex cell, double value,
                  std::span<ConditionalFormatters::FormatIndex const> holding);
  void give(std::size_t format, double value, std::span<double const> bounds,
            std::span<ConditionalFormatters::FormatIndex const> holding);
  [[nodiscard]] bool isBehindFill(
      std::size_t formatsBefore,
      std::span<ConditionalFormatters::FormatIndex const> holding) const noexcept;
  [[nodiscard]] bool fulfilsCondition(std::size_t format, CellIndex cell);
  [[nodiscard]] std::span<double const> getBounds(std::size_t format);
  void fail(std::size_t format, std::exception_ptr const& exception);

  PreparedVisuals const& _visuals;
  PassBounds& _bounds;
  bool _stopsAtFailure;
  StepCounter _steps;
  ConditionalFormatters::FormatCursor _cursor;
  FormulaEvaluator _formulas;
  std::vector<State> _states;  ///< by format
  CellVisuals _drawn;
  /// Kinds that are drawn, or whose first format failed, for the current cell; by
  /// VisualKind::index().
  std::array<bool, 3> _isTaken{};
  VisualFailure _failure{};
};

}  // namespace Zorv::Visuals
