#pragma once

#include <stdexcept>

#include "Utils/CellIndex.h"

// Stands before the host's own header of this name in the include path of one test program: the
// cell of a host whose getters may throw.
namespace Zorv::DOM {

class Cell;
class Table;

class CellInfo {
public:
  static constexpr unsigned always = ~0U;

  /// Gives its row so many times, and throws from then on.
  CellInfo(Table const& table, CellIndex index, Cell const* cell, unsigned answers = always)
      : _table(table), _index(index), _cell(cell), _answers(answers) {}

  [[nodiscard]] Table const& getTable() const noexcept { return _table; }
  [[nodiscard]] Cell const* getCell() const noexcept { return _cell; }
  [[nodiscard]] unsigned long getRowIndex() const {
    if (_answers == 0) {
      throw std::out_of_range("no row");
    }
    --_answers;
    return _index.getRow().get();
  }
  [[nodiscard]] unsigned long getColIndex() const noexcept { return _index.getColumn().get(); }

private:
  Table const& _table;
  CellIndex _index;
  Cell const* _cell;
  mutable unsigned _answers;
};

}  // namespace Zorv::DOM
