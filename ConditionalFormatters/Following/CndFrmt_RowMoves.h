#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// An edit of rows, by the numbers with which it was made.
struct RowEdit {
  enum class Kind : std::uint8_t { Insert, Delete, Move };
  Kind kind;
  unsigned long first;
  unsigned long count;
  unsigned long before = 0;  ///< the row before which rows were moved, where it was
};

/// Neighbouring rows that edits move by one distance, or remove.
struct RowRun {
  unsigned long first;
  unsigned long end;
  std::optional<unsigned long> shift;  ///< modulo 2^64; none: the rows are gone

  friend bool operator==(RowRun const&, RowRun const&) noexcept = default;
};

/// Where edits of rows, one after the other, put the rows of a sheet. A value.
///
/// Edits that reach beyond the sheet are cut at its end.
class RowMoves {
public:
  RowMoves();

  void add(RowEdit const& edit);

  [[nodiscard]] bool isEmpty() const noexcept { return _edits.empty(); }
  /// The edits that change something, as they were made.
  [[nodiscard]] std::vector<RowEdit> const& getEdits() const noexcept { return _edits; }
  /// Ascending, from the first row to the last one of the sheet, without gaps.
  [[nodiscard]] std::vector<RowRun> const& getRuns() const noexcept { return _runs; }
  /// The run of a row before the edits. Requires a row of the sheet.
  [[nodiscard]] RowRun const& runOf(unsigned long row) const noexcept;

  /// True if rows that remain keep their order.
  [[nodiscard]] bool keepOrder() const noexcept;

  /// A range whose corners stay with their rows; where these are gone, with the next ones inside.
  [[nodiscard]] TableRange move(TableRange const& range) const noexcept;
  /// Appends where the rows of an area are after the edits.
  void appendMoved(TableRange const& area, std::vector<TableRange>& areas) const;

private:
  std::vector<RowEdit> _edits;
  std::vector<RowRun> _runs;
};

}  // namespace Zorv::ConditionalFormatters
