#pragma once

#include <deque>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"
#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {

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

  /// Forgets everything that was collected, for all formats.
  void forget() noexcept;

private:
  std::deque<RangeOperands> _operands;          ///< one for each list of ranges
  std::vector<RangeOperands const*> _byFormat;  ///< null for most; none if all are null
};

}  // namespace Zorv::ConditionalFormatters
