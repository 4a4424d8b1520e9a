#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeIndex.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_StyleSequences.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/LookupCache.h"

namespace Zorv::ConditionalFormatters {

/// What all passes over a table share.
class TableResolverParts {
public:
  TableResolverParts(ValueContextProvider const& valueContextProvider, DOM::Table const& table,
                     ConditionalFormatRefs const& formatRefs, DOM::Styles const& styles,
                     DOM::SharedObjectFactory const& sharedObjectFactory);

  [[nodiscard]] DOM::Table const& getTable() const noexcept { return _sources.table; }

  /// Whether the condition of one format holds for a cell, wherever its ranges lie. Throws
  /// std::out_of_range where there is no such format.
  [[nodiscard]] bool holds(std::size_t format, DOM::CellInfo const& cellInfo) const;

private:
  friend class CellResolver;

  ConditionalFormatRefs const& _formatRefs;
  OperatorsFactory _factory;
  ConditionSources _sources;
  RangeIndex _rangeIndex;
  StyleSequences _styleSequences;
  std::vector<std::unique_ptr<PreparedCondition const>> _conditions;  ///< by format
  mutable Formulas::LookupCache _lookups;
};

/// Resolves one cell after the other for one thread; fastest in row order.
class CellResolver {
public:
  /// Borrows the parts, which must outlive the resolver. What a condition makes once is made by as
  /// many threads as the pass has.
  CellResolver(TableResolverParts const& parts, unsigned threadCount);

  /// The cell's style, null where no format holds. The reference stays valid as long as the parts
  /// do.
  [[nodiscard]] DOM::SharedCellStylePtr const& resolve(DOM::CellInfo const& cellInfo);

  /// The formats that held for the cell resolved last, in order of priority.
  [[nodiscard]] FormatNumbers const& getHolding() const noexcept { return _holding; }

private:
  TableResolverParts const& _parts;
  unsigned _threadCount;
  FormatCursor _formatCursor;
  StyleCursor _styleCursor;
  FormatNumbers _holding;
  Formulas::EvaluationSession _session;
};

}  // namespace Zorv::ConditionalFormatters
