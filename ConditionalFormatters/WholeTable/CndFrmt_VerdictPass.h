#pragma once

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassRequest.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "OfficeUtils/Clock.h"

namespace Zorv::ConditionalFormatters {

/// Asks the condition of one format about any cells of the table, for one thread.
class ConditionAsker {
public:
  /// Borrows the table. The condition is prepared for this request, at the first cell.
  ConditionAsker(PreparedTable const& table, FormatIndex format, PassRequest const& request,
                 OfficeUtils::Clock::TimePoint moment);

  [[nodiscard]] bool holds(DOM::CellInfo const& cellInfo);
  /// The same for a cell that is known to lie in the format's ranges.
  [[nodiscard]] bool holdsInRanges(DOM::CellInfo const& cellInfo);
  [[nodiscard]] ConditionOperands findOperands(DOM::CellInfo const& cellInfo);

private:
  [[nodiscard]] PreparedCondition const& getCondition() const {
    return _table.getOrCreateCondition(_format, _request);
  }
  [[nodiscard]] bool liesInRanges(DOM::CellInfo const& cellInfo) const;
  [[nodiscard]] TestedCell read(DOM::CellInfo const& cellInfo, bool isInRanges) const;

  PreparedTable const& _table;
  FormatIndex _format;
  PassRequest _request;
  PassContext _pass;
};

/// Visits the verdicts of one condition; see TableResolver::visitVerdicts().
void judgeCells(PreparedTable const& table, FormatIndex format, TablePass const& pass,
                VerdictVisitor const& visitor);

}  // namespace Zorv::ConditionalFormatters
