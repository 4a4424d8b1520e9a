#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace Zorv::ConditionalFormatters {

/// Rows or columns from `first` up to `end`, which lies outside.
struct LineInterval {
  unsigned long first;
  unsigned long end;

  [[nodiscard]] bool isEmpty() const noexcept { return first >= end; }
  friend bool operator==(LineInterval const&, LineInterval const&) noexcept = default;
};

/// An edit of rows or of columns, by the numbers with which it was made.
struct AxisEdit {
  enum class Kind : std::uint8_t { Insert, Delete, Move };
  Kind kind;
  unsigned long first;
  unsigned long count;
  unsigned long before = 0;  ///< the line before which lines were moved, where it was
};

/// Neighbouring lines that edits move by one distance, or remove.
struct LineRun {
  unsigned long first;
  unsigned long end;
  std::optional<unsigned long> shift;  ///< modulo 2^64; none: the lines are gone

  friend bool operator==(LineRun const&, LineRun const&) noexcept = default;
};

/// Where edits of rows, one after the other, put the rows of a sheet; or those of columns its
/// columns. A value.
///
/// Edits that reach beyond the sheet are cut at its end.
class LineMoves {
public:
  /// `length`: how many rows, or columns, the sheet has.
  explicit LineMoves(unsigned long length);

  void add(AxisEdit const& edit);

  [[nodiscard]] bool isEmpty() const noexcept { return _edits.empty(); }
  /// The edits that change something, as they were made.
  [[nodiscard]] std::vector<AxisEdit> const& getEdits() const noexcept { return _edits; }
  /// Ascending, from the first line to the last one of the sheet, without gaps.
  [[nodiscard]] std::vector<LineRun> const& getRuns() const noexcept { return _runs; }
  /// The run of a line before the edits. Requires a line of the sheet.
  [[nodiscard]] LineRun const& runOf(unsigned long line) const noexcept;
  /// The distance by which all lines of an interval move; none if they do not stay together, if
  /// some are gone, or if the interval is empty or does not lie in the sheet.
  [[nodiscard]] std::optional<unsigned long> findShift(LineInterval const& lines) const noexcept;

  /// True if lines that remain keep their order.
  [[nodiscard]] bool keepOrder() const noexcept;

  /// An interval whose first and last lines are the same; where these are gone, the next ones
  /// inside. Empty if none is left, or if it does not lie in the sheet.
  [[nodiscard]] LineInterval move(LineInterval const& lines) const;
  /// Where the lines of an interval are after the edits, in parts.
  [[nodiscard]] std::vector<LineInterval> moveParts(LineInterval const& lines) const;

private:
  unsigned long _length;
  std::vector<AxisEdit> _edits;
  std::vector<LineRun> _runs;
};

}  // namespace Zorv::ConditionalFormatters
