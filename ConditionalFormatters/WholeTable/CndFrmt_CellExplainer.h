#pragma once

#include "ConditionalFormatters/CndFrmt_CellExplanation.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellResolver.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassRequest.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassWalk.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "DOM/CellInfo.h"
#include "OfficeUtils/Clock.h"

namespace Zorv::ConditionalFormatters {

/// Explains cells by resolving them: a CellResolver tells which formats it evaluated, and which of
/// them hold. For one thread.
class CellExplainer {
public:
  /// Borrows the table.
  CellExplainer(PreparedTable const& table, PassRequest const& request,
                OfficeUtils::Clock::TimePoint moment);

  /// See TableResolver::explain().
  [[nodiscard]] CellExplanation explain(DOM::CellInfo const& cellInfo);

private:
  void findOutcomes(DOM::CellInfo const& cellInfo, CellFailure const* failure,
                    CellExplanation& explanation) const;
  void findOperands(DOM::CellInfo const& cellInfo, CellExplanation& explanation);
  void shareProperties(CellExplanation& explanation) const;

  PreparedTable const& _table;
  PassRequest _request;
  CellResolver _resolver;
  PassContext _pass;
};

}  // namespace Zorv::ConditionalFormatters
