#pragma once

#include <deque>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"
#include "DOM/Table.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// What new values in cells mean for formats that take operands from their ranges.
struct OperandChanges {
  /// The formats that may hold for other cells than before, anywhere in their ranges.
  FormatIndices formats;
  /// Further cells, outside of those with new values, for which a format may hold now, or hold no
  /// longer.
  std::vector<CellIndex> cells;
};

/// The range operands of a table's formats. Formats with the same list of ranges share one object.
///
/// Ownership: borrows what it is made from. Threads: see RangeOperands; the operations that are not
/// const need exclusive access.
class SharedOperands {
public:
  SharedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                 ConditionalFormatRefs const& formatRefs);

  /// The operands of a format; null if its condition takes none from its ranges.
  [[nodiscard]] RangeOperands const* find(FormatIndex format) const noexcept {
    return _byFormat.empty() ? nullptr : _byFormat[format];
  }

  /// Takes over that the cells of some areas have new values, which may be none: what was collected
  /// from ranges that meet the areas is forgotten.
  [[nodiscard]] OperandChanges valuesChanged(std::span<TableRange const> areas);

private:
  /// The operands of one list of ranges, and the formats that share them.
  struct Shared {
    Shared(ValueContextProvider const& provider, DOM::Table const& table,
           std::vector<TableRange> const& ranges) noexcept
        : operands(provider, table, ranges) {}

    RangeOperands operands;
    FormatIndices formats;
  };

  std::deque<Shared> _shared;
  std::vector<RangeOperands const*> _byFormat;  ///< null for most; none if all are null
};

}  // namespace Zorv::ConditionalFormatters
