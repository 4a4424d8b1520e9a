#pragma once

#include <optional>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatCursor.h"
#include "ConditionalFormatters/Formats/CndFrmt_StyleSequences.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_LineVerdicts.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "OfficeUtils/Clock.h"
#include "Utils/WorkBudget.h"

namespace Zorv::ConditionalFormatters {

/// Resolves one cell after the other for one thread; fastest in row order.
class CellResolver {
public:
  /// Borrows the table. Conditions are prepared for the request of the pass.
  CellResolver(PreparedTable const& table, PassRequest const& request,
               OfficeUtils::Clock::TimePoint moment);

  /// The cell's style; null if no format holds. Valid as long as the table.
  [[nodiscard]] DOM::SharedCellStylePtr const& resolve(DOM::CellInfo const& cellInfo);

  /// The formats that hold for the cell resolved last, in order of priority; if it failed, those
  /// before the failure.
  [[nodiscard]] FormatIndices const& getHolding() const noexcept { return _holding; }

  /// The format that was evaluated last.
  [[nodiscard]] FormatIndex getLastEvaluated() const noexcept { return _lastEvaluated; }

private:
  PreparedCondition const& prepare(FormatIndex index) {
    _lastEvaluated = index;
    return _table.getOrCreateCondition(index, _request);
  }

  /// Asks the conditions of formats by `ask(index, condition)`, and notes those that hold.
  template <class Ask>
  void walk(FormatIndices const& formats, TestedCell const& cell, Ask const& ask);

  PreparedTable const& _table;
  PassRequest _request;
  StepCounter _steps;
  FormatCursor _formatCursor;
  StyleCursor _styleCursor;
  PassContext _pass;
  std::optional<LineVerdicts> _lineVerdicts;  ///< none if every cell has verdicts of its own
  FormatIndices _holding;
  FormatIndex _lastEvaluated = 0;
};

}  // namespace Zorv::ConditionalFormatters
