#pragma once

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "OfficeUtils/Clock.h"

namespace Zorv::ConditionalFormatters {

/// Asks the condition of one format about any cells of the table, for one thread.
class ConditionAsker {
public:
  /// Borrows the table. The condition is prepared by so many threads, at the first cell.
  ConditionAsker(PreparedTable const& table, FormatIndex format, unsigned threadCount,
                 OfficeUtils::Clock::TimePoint moment);

  [[nodiscard]] bool holds(DOM::CellInfo const& cellInfo);
  [[nodiscard]] ConditionOperands findOperands(DOM::CellInfo const& cellInfo);

private:
  [[nodiscard]] PreparedCondition const& getCondition() const {
    return _table.getOrCreateCondition(_format, _threadCount);
  }
  [[nodiscard]] TestedCell read(DOM::CellInfo const& cellInfo) const;

  PreparedTable const& _table;
  FormatIndex _format;
  unsigned _threadCount;
  PassContext _pass;
};

/// Visits the verdicts of one condition; see TableResolver::visitVerdicts().
void judgeCells(PreparedTable const& table, FormatIndex format, TablePass const& pass,
                VerdictVisitor const& visitor);

}  // namespace Zorv::ConditionalFormatters
