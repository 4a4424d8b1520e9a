#pragma once

#include <cstdint>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedTable.h"
#include "DOM/CellInfo.h"

namespace Zorv::ConditionalFormatters {

/// Verdicts that the cells of a row or a column share: each condition is asked once for them.
///
/// A condition that is false for a row is also taken off the row's list of formats, so that 300
/// rules for whole rows cost the cells of a row little more than those that hold. An exception is
/// no verdict: the condition is asked again for the next cell.
///
/// For one thread, an unchanged document and one pass, whose cells come in row order. Borrows the
/// table.
class LineVerdicts {
public:
  explicit LineVerdicts(PreparedTable const& table) : _table(table) {}

  /// The formats of a cell without those that are known to be false for its row. `formats` are
  /// those whose ranges hold the cell; another list is another object, at least within a row. Valid
  /// until the next call.
  [[nodiscard]] FormatIndices const& select(DOM::CellInfo const& cellInfo,
                                            FormatIndices const& formats);

  /// The verdict of a format's condition: a known one, or its answer.
  [[nodiscard]] bool ask(FormatIndex format, PreparedCondition const& condition,
                         TestedCell const& cell, PassContext& pass);

private:
  enum class Verdict : std::uint8_t { Unknown, False, True };
  struct OfRow {
    unsigned long row = 0;
    Verdict verdict = Verdict::Unknown;
  };

  [[nodiscard]] bool isFalseForRow(FormatIndex format, unsigned long row) const noexcept;
  /// Where the verdict of a format about a cell's row or column is kept; null if it is not.
  [[nodiscard]] Verdict* find(FormatIndex format, TestedCell const& cell);

  PreparedTable const& _table;
  std::vector<OfRow> _ofRow;                     ///< by format
  std::vector<std::vector<Verdict>> _ofColumns;  ///< by format and column

  // The list that is left of `_all` in `_row`.
  FormatIndices const* _all = nullptr;
  unsigned long _row = 0;
  FormatIndices _left;
  bool _hasNewFalse = false;  ///< formats of the list have become known to be false
};

}  // namespace Zorv::ConditionalFormatters
