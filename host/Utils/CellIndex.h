#pragma once

#include "Utils/TaggedValue.h"

namespace Zorv {

struct RowOrColumnTag {};

/// Current position of a row in a table, from 0.
using RowIndex = TaggedValue<unsigned long, ValueTag<RowOrColumnTag, 0>>;
/// Current position of a column in a table, from 0.
using ColumnIndex = TaggedValue<unsigned long, ValueTag<RowOrColumnTag, 1>>;

/// Current position of a cell in its table.
class CellIndex {
public:
  /// The position of a cell.
  constexpr CellIndex(RowIndex row, ColumnIndex column) noexcept : _row(row), _column(column) {}

  /// The row, from 0.
  [[nodiscard]] constexpr RowIndex getRow() const noexcept { return _row; }
  /// The column, from 0.
  [[nodiscard]] constexpr ColumnIndex getColumn() const noexcept { return _column; }

  friend constexpr auto operator<=>(CellIndex const&, CellIndex const&) noexcept = default;

private:
  RowIndex _row;
  ColumnIndex _column;
};

}  // namespace Zorv
