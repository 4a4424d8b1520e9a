#include "DOM/Table.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

namespace Zorv::DOM {
namespace {

using Place = std::pair<unsigned long, unsigned long>;
using Content = std::vector<std::pair<Place, double>>;

/// Model of an axis: its identities in a list.
class ModelLines {
public:
  explicit ModelLines(unsigned long length) : _ids(length), _nextId(length + 1) {
    std::iota(_ids.begin(), _ids.end(), 1UL);
  }

  [[nodiscard]] unsigned long idAt(unsigned long position) const { return _ids[position]; }
  [[nodiscard]] unsigned long size() const { return _ids.size(); }

  void insert(unsigned long before, unsigned long count) {
    _ids.resize(_ids.size() - count);
    std::vector<unsigned long> fresh(count);
    std::iota(fresh.begin(), fresh.end(), _nextId);
    _nextId += count;
    _ids.insert(at(before), fresh.begin(), fresh.end());
  }
  void remove(unsigned long first, unsigned long count) {
    _ids.erase(at(first), at(first + count));
    for (; count > 0; --count) {
      _ids.push_back(_nextId++);
    }
  }
  void move(unsigned long first, unsigned long count, unsigned long before) {
    if (before < first) {
      std::rotate(at(before), at(first), at(first + count));
    } else if (before > first + count) {
      std::rotate(at(first), at(first + count), at(before));
    }
  }

private:
  std::vector<unsigned long>::iterator at(unsigned long position) {
    return _ids.begin() + static_cast<std::ptrdiff_t>(position);
  }

  std::vector<unsigned long> _ids;
  unsigned long _nextId;
};

/// Model of a table: cells by the identities of their rows and columns, so that they never move.
struct ModelTable {
  ModelLines rows{Table::rowCount};
  ModelLines columns{Table::columnCount};
  std::map<Place, double> cellsByID;

  /// The cells of a range, found by a look-up at every position.
  [[nodiscard]] Content contentOf(TableRange const& range) const {
    Content content;
    for (unsigned long row = range.firstRow; row < range.endRow; ++row) {
      for (unsigned long column = range.firstColumn; column < range.endColumn; ++column) {
        auto const found = cellsByID.find({rows.idAt(row), columns.idAt(column)});
        if (found != cellsByID.end()) {
          content.emplace_back(Place(row, column), found->second);
        }
      }
    }
    return content;
  }
};

Content contentOf(Table const& table, TableRange const& range) {
  Content content;
  auto const [begin, end] = table.getRangeIterators(range);
  for (auto it = begin; it != end; ++it) {
    CellInfo const info = it.getCellInfo();
    content.emplace_back(
        Place(info.getRowIndex(), info.getColIndex()),
        boost::get<FormulaModel::FormulaNumber>(info.getCell()->value).value.get());
  }
  return content;
}

/// Applies the same random edits to a table and to its model. They stay in the corner of `side`
/// rows and columns.
class RandomTables {
public:
  static constexpr unsigned long side = 60;

  explicit RandomTables(unsigned seed) : _generator(seed) {}

  void edit() {
    switch (upTo(9)) {
      case 0:
        return insert();
      case 1:
        return remove();
      case 2:
        return move();
      case 3:
        return removeCell();
      default:
        return setValue();
    }
  }

  void expectAgreement() {
    TableRange const corner{0, 0, side, side};
    ASSERT_EQ(contentOf(table, {0, 0, Table::rowCount, Table::columnCount}),
              model.contentOf(corner));
    ASSERT_EQ(table.getCellCount(), model.contentOf(corner).size());
    unsigned long const firstRow = upTo(side);
    unsigned long const firstColumn = upTo(side);
    TableRange const some{firstRow, firstColumn, upTo(side), upTo(side)};
    ASSERT_EQ(contentOf(table, some), model.contentOf(some));
    for (unsigned long line = 0; line < side; ++line) {
      ASSERT_EQ(table.getRowID(line).get(), model.rows.idAt(line));
      ASSERT_EQ(table.getColumnID(line).get(), model.columns.idAt(line));
    }
    unsigned long const anyRow = upTo(Table::rowCount - 1);
    ASSERT_EQ(table.getRowID(anyRow).get(), model.rows.idAt(anyRow));
    ASSERT_EQ(table.getColumnID(Table::columnCount - 1).get(),
              model.columns.idAt(Table::columnCount - 1));
  }

  Table table;
  ModelTable model;

private:
  unsigned long upTo(unsigned long largest) {
    return std::uniform_int_distribution<unsigned long>(0, largest)(_generator);
  }

  void setValue() {
    unsigned long const row = upTo(side / 2);
    unsigned long const column = upTo(side / 2);
    auto const number = static_cast<double>(upTo(1000));
    table.setValue(row, column, FormulaModel::FormulaNumber{FloatNumber(number)});
    model.cellsByID[{model.rows.idAt(row), model.columns.idAt(column)}] = number;
  }

  void removeCell() {
    unsigned long const row = upTo(side / 2);
    unsigned long const column = upTo(side / 2);
    table.removeCell(row, column);
    model.cellsByID.erase({model.rows.idAt(row), model.columns.idAt(column)});
  }

  void insert() {
    // Few enough that no cell leaves the corner.
    TableRange const used = table.getUsedRange();
    unsigned long const count = 1 + upTo(2);
    unsigned long const before = upTo(side / 2);
    if (upTo(1) == 0 && used.endRow + count <= side) {
      table.insertRows(before, count);
      model.rows.insert(before, count);
    } else if (used.endColumn + count <= side) {
      table.insertColumns(before, count);
      model.columns.insert(before, count);
    }
  }

  void remove() {
    unsigned long const count = 1 + upTo(2);
    unsigned long const first = upTo(side / 2);
    if (upTo(1) == 0) {
      table.deleteRows(first, count);
      model.rows.remove(first, count);
    } else {
      table.deleteColumns(first, count);
      model.columns.remove(first, count);
    }
  }

  void move() {
    unsigned long const count = 1 + upTo(5);
    unsigned long const first = upTo(side - 10);
    unsigned long const before = upTo(side - 1);
    if (upTo(1) == 0) {
      table.moveRows(first, count, before);
      model.rows.move(first, count, before);
    } else {
      table.moveColumns(first, count, before);
      model.columns.move(first, count, before);
    }
  }

  std::mt19937 _generator;
};

TEST(TableModel, TheTableAgreesWithThePlainestTableOverRandomEdits) {
  for (unsigned seed = 0; seed < 3; ++seed) {
    SCOPED_TRACE(seed);
    RandomTables tables(seed);
    for (int step = 0; step < 300; ++step) {
      tables.edit();
      if (step % 5 == 0) {
        tables.expectAgreement();
        ASSERT_FALSE(testing::Test::HasFatalFailure()) << "step " << step;
      }
    }
  }
}

}  // namespace
}  // namespace Zorv::DOM
