#pragma once

#include <string>
#include <tuple>
#include <utility>

#include "DOM/CellInfo.h"
#include "Utils/TableRange.h"
#include "support/Journal.h"

// Stands before the host's own header of this name in the include path of one test program: a table
// whose iterators note what is done to them. It has what collecting values from ranges needs, and
// nothing else.
namespace Zorv::DOM {

template <bool readOnly>
class CellRangeIt;

/// Walks down the first column of a range. Copies are told apart by their names: a copy of "begin"
/// is "begin'".
template <>
class CellRangeIt<true> {
public:
  CellRangeIt(Table const& table, TestSupport::Journal& journal, std::string name,
              unsigned long row)
      : _table(table), _journal(journal), _name(std::move(name)), _row(row) {}
  CellRangeIt(CellRangeIt const& other)
      : _table(other._table), _journal(other._journal), _name(other._name + "'"), _row(other._row) {
    _journal.note("copy " + other._name);
  }
  CellRangeIt& operator=(CellRangeIt const&) = delete;
  ~CellRangeIt() = default;

  bool operator!=(CellRangeIt const& other) const {
    _journal.note(_name + " != " + other._name);
    return _row != other._row;
  }
  CellRangeIt& operator++() {
    _journal.note("++" + _name);
    ++_row;
    return *this;
  }
  [[nodiscard]] CellInfo getCellInfo() const {
    _journal.note(_name + ".getCellInfo");
    return {_table, CellIndex(RowIndex(_row), ColumnIndex(0)), nullptr};
  }

private:
  Table const& _table;
  TestSupport::Journal& _journal;
  std::string _name;
  unsigned long _row;
};

class Table {
public:
  explicit Table(TestSupport::Journal& journal) : _journal(journal) {}

  [[nodiscard]] std::pair<CellRangeIt<true>, CellRangeIt<true>> getRangeIterators(
      TableRange const& range) const {
    _journal.note("getRangeIterators " + std::to_string(range.firstRow) + " to " +
                  std::to_string(range.endRow));
    // In place, so that every copy that is noted is one of the caller.
    return {std::piecewise_construct,
            std::tuple<Table const&, TestSupport::Journal&, char const*, unsigned long>(
                *this, _journal, "begin", range.firstRow),
            std::tuple<Table const&, TestSupport::Journal&, char const*, unsigned long>(
                *this, _journal, "end", range.endRow)};
  }

private:
  TestSupport::Journal& _journal;
};

}  // namespace Zorv::DOM
