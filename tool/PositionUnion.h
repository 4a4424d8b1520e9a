#pragma once

#include <cstdint>
#include <vector>

#include "DOM/CellInfo.h"
#include "DOM/Table.h"
#include "Utils/TableRange.h"

namespace Zorv::Tool {

/// The range with so many more rows below it and columns to its right, as far as the sheet goes. An
/// empty range stays empty.
[[nodiscard]] TableRange extend(TableRange const& range, unsigned long count) noexcept;

/// The positions that lie in at least one of some ranges, each once: row by row from the top, each
/// row from the left.
class PositionUnion {
public:
  /// Takes of each range what lies in `bounds`.
  PositionUnion(std::vector<TableRange> const& ranges, TableRange const& bounds);

  /// How many positions there are.
  [[nodiscard]] std::uint64_t size() const noexcept;

  /// Ranges that hold every position, and at most seven others for each: one range for most unions.
  /// They do not overlap, and going through one after the other, row by row, each row from the
  /// left, is going through the union in order.
  [[nodiscard]] std::vector<TableRange> cover() const;

  /// Calls `visit(cellInfo)` for every position, whether it holds a cell or not.
  template <class Visitor>
  void forEachPosition(DOM::Table const& table, Visitor const& visit) const {
    for (auto const& band : _bands) {
      for (auto row = band.firstRow; row < band.endRow; ++row) {
        for (auto const& columns : band.columns) {
          for (auto column = columns.first; column < columns.end; ++column) {
            visit(table.getCellInfo(row, column));
          }
        }
      }
    }
  }

  /// Calls `visit(cellInfo)` for every position that holds a cell; costs what those cells cost.
  template <class Visitor>
  void forEachCell(DOM::Table const& table, Visitor const& visit) const {
    for (auto const& band : _bands) {
      auto const [begin, end] = table.getRangeIterators(
          {band.firstRow, band.columns.front().first, band.endRow, band.columns.back().end});
      for (auto cell = begin; cell != end; ++cell) {
        auto const cellInfo = cell.getCellInfo();
        if (band.contains(cellInfo.getColIndex())) {
          visit(cellInfo);
        }
      }
    }
  }

private:
  struct Columns {
    unsigned long first;
    unsigned long end;
  };
  /// Neighbouring rows in which the same columns belong to the union.
  struct Band {
    unsigned long firstRow;
    unsigned long endRow;
    std::vector<Columns> columns;  ///< ascending, apart from one another, at least one

    [[nodiscard]] bool contains(unsigned long column) const noexcept;
    [[nodiscard]] std::uint64_t size() const noexcept;
    [[nodiscard]] TableRange getBounds() const noexcept;
    /// Each part of each row by itself.
    void appendRows(std::vector<TableRange>& ranges) const;
  };

  static std::vector<Columns> joinColumns(std::vector<TableRange> const& ranges);

  std::vector<Band> _bands;  ///< ascending
};

}  // namespace Zorv::Tool
