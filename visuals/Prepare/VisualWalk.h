#pragma once

#include <cstdint>
#include <exception>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"
#include "DOM/CellInfo.h"
#include "Utils/WorkBudget.h"
#include "visuals/CellVisuals.h"
#include "visuals/Prepare/FormulaEvaluator.h"
#include "visuals/Prepare/PreparedVisuals.h"

namespace Zorv::Visuals {

/// Draws the visuals of one cell after the other, for one pass and one thread; fastest in row
/// order.
class VisualWalk {
public:
  /// Borrows the visuals and the budget, which may be null.
  VisualWalk(PreparedVisuals const& visuals, OfficeUtils::Clock::TimePoint moment,
             WorkBudget* budget);

  /// The visuals of a cell for which these conditional formats hold, in order of priority up to the
  /// first that stops. Throws what the budget throws, and std::bad_alloc. Valid until the next
  /// call.
  [[nodiscard]] CellVisuals const& draw(
      DOM::CellInfo const& cellInfo, std::span<ConditionalFormatters::FormatIndex const> holding);

  /// The first failure for the cell that was drawn last; null if there is none.
  [[nodiscard]] VisualFailure const* getFailure() const noexcept {
    return _failure.exception ? &_failure : nullptr;
  }

private:
  enum class Progress : std::uint8_t { Unknown, Ready, Failed };

  /// What is known of a format's thresholds, and of its own condition.
  struct State {
    Progress progress = Progress::Unknown;
    Bounds bounds;
    std::exception_ptr failure;  ///< of the thresholds, or the limit that the condition met
    unsigned limitCount = 0;     ///< how often the condition met a limit of the engine
  };

  void drawFormat(std::size_t format, CellIndex cell, double value,
                  std::span<ConditionalFormatters::FormatIndex const> holding);
  [[nodiscard]] bool isWanted(VisualKind const& kind) const noexcept;
  void give(std::size_t format, double value, std::span<double const> bounds,
            std::span<ConditionalFormatters::FormatIndex const> holding);
  [[nodiscard]] bool isBehindFill(
      std::size_t formatsBefore,
      std::span<ConditionalFormatters::FormatIndex const> holding) const noexcept;
  [[nodiscard]] bool fulfilsCondition(std::size_t format, CellIndex cell);
  [[nodiscard]] Bounds const& getBounds(std::size_t format);
  void fail(std::size_t format, std::exception_ptr const& exception);

  PreparedVisuals const& _visuals;
  WorkBudget* _budget;
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
