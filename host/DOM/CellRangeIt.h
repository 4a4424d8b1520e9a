#pragma once

#include "DOM/CellInfo.h"
#include "DOM/CellStore.h"
#include "Utils/Export.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {

template <bool readOnly>
class CellRangeIt;

/// Walks the existing cells of a range, row by row from the top, each row from the left.
///
/// Steps over what lies outside the range at the cost of one search a row. Valid until the table
/// changes; made by Table::getRangeIterators().
template <>
class ZORV_HOST_EXPORT CellRangeIt<true> {
public:
  /// At the first cell of the range from `position` on.
  CellRangeIt(Table const& table, CellStore const& cells, TableRange const& range,
              CellStore::Position position) noexcept
      : _table(&table), _cells(&cells), _range(range), _position(position) {
    skipToRange();
  }

  [[nodiscard]] CellInfo getCellInfo() const noexcept {
    CellIndex const index(RowIndex(_cells->rowAt(_position)),
                          ColumnIndex(_cells->columnAt(_position)));
    return {*_table, index, &_cells->cellAt(_position)};
  }

  CellRangeIt& operator++() noexcept {
    _position = _cells->next(_position);
    skipToRange();
    return *this;
  }

  /// Compares the places of two iterators over one range.
  friend bool operator==(CellRangeIt const& a, CellRangeIt const& b) noexcept {
    return a._position == b._position;
  }

private:
  void skipToRange() noexcept {
    if (_position != _cells->end() &&
        !_range.contains(_cells->rowAt(_position), _cells->columnAt(_position))) {
      searchInRange();
    }
  }
  void searchInRange() noexcept;

  Table const* _table;
  CellStore const* _cells;
  TableRange _range;
  CellStore::Position _position;
};

}  // namespace Zorv::DOM
