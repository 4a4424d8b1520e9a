#pragma once

#include <cassert>
#include <cstddef>

#include "DOM/CellInfo.h"
#include "DOM/CellStore.h"
#include "DOM/ColumnSet.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {

template <bool readOnly>
class CellRangeIt;

/// Iterator over the existing cells of a range, row by row from the top, each row from the left.
///
/// Skips the cells outside the range at the cost of one search per row, or of two comparisons where
/// the rows have equally many cells; of one comparison per block of cells that has none of the
/// range's columns, where these are fewer than 64. Valid until the table changes. See
/// Table::getRangeIterators().
template <>
class ZORV_HOST_EXPORT CellRangeIt<true> {
public:
  /// Points to the first cell of the range at or after `position`, which must not lie before the
  /// range.
  CellRangeIt(Table const& table, CellStore const& cells, TableRange const& range,
              CellStore::Position position) noexcept
      : _table(&table),
        _cells(&cells),
        _endRow(range.endRow),
        _firstColumn(range.firstColumn),
        _columnCount(range.endColumn - range.firstColumn),
        _columns(_firstColumn, _columnCount) {
    enter(position);
    skipToRange();
  }

  /// Requires that this is not the end iterator.
  [[nodiscard]] CellInfo getCellInfo() const noexcept {
    assert(_at != nullptr);
    return {*_table, CellIndex(RowIndex(_at->getRow()), ColumnIndex(_at->getColumn())), &_at->cell};
  }

  /// Goes to the next cell. Requires that this is not the end iterator.
  CellRangeIt& operator++() noexcept {
    if (++_at == _stretchEnd) {
      enter({_block + 1, 0});
    }
    skipToRange();
    return *this;
  }

  /// Compares two iterators over one range.
  friend bool operator==(CellRangeIt const& a, CellRangeIt const& b) noexcept {
    return a._at == b._at;
  }

private:
  /// Goes to a place, or beyond it to the next block that may have the range's columns.
  void enter(CellStore::Position position) noexcept {
    position = _cells->skipBlocks(position, _columns, _endRow);
    auto const stretch = _cells->getStretch(position);
    _block = position.block;
    _at = stretch.empty() ? nullptr : stretch.data();
    _stretchEnd = stretch.data() + stretch.size();
  }
  void skipToRange() noexcept {
    if (_at != nullptr &&
        (_at->getRow() >= _endRow || _at->getColumn() - _firstColumn >= _columnCount)) {
      searchInRange();
    }
  }
  void searchInRange() noexcept;
  /// Goes to the first cell that is not before a row and a column. Requires that it lies ahead.
  void search(unsigned long row, unsigned long column) noexcept;

  Table const* _table;
  CellStore const* _cells;
  unsigned long _endRow;
  unsigned long _firstColumn;
  unsigned long _columnCount;
  ColumnSet _columns;
  std::size_t _block = 0;
  CellStore::Entry const* _at = nullptr;  ///< null at the end
  CellStore::Entry const* _stretchEnd = nullptr;
  std::ptrdiff_t _lastStep = 1;  ///< how many cells ahead the last search ended
};

}  // namespace Zorv::DOM
