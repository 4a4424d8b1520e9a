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
              CellStore::Position position) noexcept;

  [[nodiscard]] CellInfo getCellInfo() const noexcept;

  CellRangeIt& operator++() noexcept;

  /// Compares the places of two iterators over one range.
  friend bool operator==(CellRangeIt const& a, CellRangeIt const& b) noexcept {
    return a._position == b._position;
  }

private:
  void skipToRange() noexcept;

  Table const* _table;
  CellStore const* _cells;
  TableRange _range;
  CellStore::Position _position;
};

}  // namespace Zorv::DOM
