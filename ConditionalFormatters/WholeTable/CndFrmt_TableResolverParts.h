#pragma once

#include <deque>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_StyleSequences.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "Formulas/EvaluationSession.h"

namespace Zorv::ConditionalFormatters {

/// What all passes over a table share.
class TableResolverParts {
public:
  TableResolverParts(ValueContextProvider const& valueContextProvider, DOM::Table const& table,
                     ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                     DOM::SharedObjectFactory const& sharedObjectFactory);

  [[nodiscard]] DOM::Table const& getTable() const noexcept { return _table; }

private:
  friend class CellResolver;

  ValueContextProvider const& _valueContextProvider;
  DOM::Table const& _table;
  ConditionalFormatRefs const& _formatRefs;
  OperatorsFactory _factory;
  RangeIndex _rangeIndex;
  StyleSequences _styleSequences;
  std::deque<PreparedCondition> _conditions;  ///< by format
};

/// Resolves one cell after the other for one thread; fastest in row order.
class CellResolver {
public:
  /// Borrows the parts, which must outlive the resolver.
  explicit CellResolver(TableResolverParts const& parts);

  /// The cell's style, null where no format holds. The reference stays valid as long as the parts
  /// do.
  [[nodiscard]] DOM::SharedCellStylePtr const& resolve(DOM::CellInfo const& cellInfo);

private:
  TableResolverParts const& _parts;
  FormatCursor _formatCursor;
  StyleCursor _styleCursor;
  StyleSequence _holding;
  Formulas::EvaluationSession _session;
};

}  // namespace Zorv::ConditionalFormatters
