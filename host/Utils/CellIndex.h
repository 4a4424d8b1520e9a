#pragma once

#include "Utils/TaggedValue.h"

namespace Zorv {

struct RowOrColumnTag {};

/// Current row and column positions in a table, from 0.
using RowIndex = TaggedValue<unsigned long, ValueTag<RowOrColumnTag, 0>>;
using ColumnIndex = TaggedValue<unsigned long, ValueTag<RowOrColumnTag, 1>>;

/// Current position of a cell in its table.
class CellIndex {
public:
  constexpr CellIndex(RowIndex row, ColumnIndex column) noexcept : _row(row), _column(column) {}

  [[nodiscard]] constexpr RowIndex getRow() const noexcept { return _row; }
  [[nodiscard]] constexpr ColumnIndex getColumn() const noexcept { return _column; }

  friend constexpr auto operator<=>(CellIndex const&, CellIndex const&) noexcept = default;

private:
  RowIndex _row;
  ColumnIndex _column;
};

}  // namespace Zorv
