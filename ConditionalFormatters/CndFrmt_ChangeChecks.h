#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_Export.h"
#include "Utils/CellIndex.h"

// The search for changes that a host does not tell; see LiveResolver::check().
namespace Zorv::ConditionalFormatters {

/// Evidence that something changed without being told.
struct UntoldChange {
  /// Kind of the answer that differs.
  enum class Kind : std::uint8_t {
    /// A format answers otherwise for a cell than at an earlier change, and nothing that was told
    /// meanwhile reaches the cell: its value is new, or one that the format's formula refers to.
    Verdict,
    /// A format answers otherwise than it would by the values of now: one of its ranges is new, or
    /// one that its formula refers to for all cells.
    Operands,
    /// The table's list of formats is another, or the ranges of a format are.
    Formats,
  };

  Kind kind = Kind::Formats;  ///< the kind of the answer that differs
  /// The cell and the format, by its index in the order of priority; both 0 for Kind::Formats.
  CellIndex cell{RowIndex(0), ColumnIndex(0)};
  FormatIndex format = 0;  ///< see `cell`
  bool held = false;       ///< the known answer
  bool holds = false;      ///< the answer of an Operator that is made now
};

/// One line for a log: the cell in A1 notation, the format's index, and what was not told.
[[nodiscard]] CNDFRMT_EXPORT std::string describe(UntoldChange const& change);

/// How to search for them.
struct ChangeChecks {
  /// Called for each finding, while the change is applied. May not use the resolver; what it throws
  /// reaches the caller of LiveResolver::apply().
  std::function<void(UntoldChange const&)> report;
  /// How many cells are looked at for each change.
  std::size_t cellCount = 8;
  /// Which ones: the same for the same number.
  std::uint32_t seed = 1;
};

}  // namespace Zorv::ConditionalFormatters
