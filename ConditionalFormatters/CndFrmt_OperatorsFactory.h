#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// Makes executable conditions out of the conditional formats of one table.
///
/// Ownership: borrows the provider and the table, which must outlive the factory. Immutable, and
/// remembers nothing: each create() makes an operator of its own and collects anew.
/// Threads: const members may run concurrently as far as the provider may.
class CNDFRMT_EXPORT OperatorsFactory {
public:
  /// Borrows its arguments.
  OperatorsFactory(ValueContextProvider const& valueContextProvider,
                   DOM::Table const& table) noexcept;

  /// The condition of a format over its ranges; never null.
  ///
  /// The operator keeps references into the format's record, and to the table and the provider's
  /// formula context where its condition has formulas. Those are taken as written relative to the
  /// corner of the smallest first row and the smallest first column of all ranges; a condition with
  /// formulas and without ranges stops the process.
  /// Throws what the provider throws. Cost: top/bottom, average and uniqueness conditions ask the
  /// provider for the value of every cell of the ranges.
  [[nodiscard]] std::unique_ptr<Operator> create(ConditionalFormatRef const& formatRef) const;

  /// Gathers the values of the existing cells of all ranges: the ranges in their order, each row by
  /// row. A cell of two ranges is visited twice.
  ///
  /// The provider is asked once for each visited cell; `collector(container, value)` decides what
  /// of the value, which it owns, enters the container.
  template <class Container, class Collector>
  [[nodiscard]] Container collectValuesFromRange(std::vector<TableRange> const& ranges,
                                                 Collector const& collector) const;

private:
  ValueContextProvider const& _valueContextProvider;
  DOM::Table const& _table;
};

template <class Container, class Collector>
Container OperatorsFactory::collectValuesFromRange(std::vector<TableRange> const& ranges,
                                                   Collector const& collector) const {
  Container container;
  for (TableRange const& range : ranges) {
    auto const [begin, end] = _table.getRangeIterators(range);
    for (auto cell = begin; cell != end; ++cell) {
      collector(container, _valueContextProvider.getCellValue(cell.getCellInfo()));
    }
  }
  return container;
}

}  // namespace Zorv::ConditionalFormatters
