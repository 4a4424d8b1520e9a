#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <unordered_map>
#include <vector>

#include "DOM/CellStyle.h"
#include "DOM/SharedStyle.h"
#include "render/Build/AreaSweep.h"
#include "render/Build/ShownLines.h"
#include "workbook/TableLooks.h"

namespace Zorv::Render {

/// The styles of a sheet's tables in its picture, row by row from the top. Of tables that overlap,
/// the one that begins further up counts.
///
/// Cost: one look into a hash table for each position of a table.
class TableStyles {
public:
  using Style = DOM::SharedStyle<DOM::CellStyle>;

  /// `usual` is the style of cells without a style of their own; may be null. Borrows all.
  TableStyles(std::span<Workbook::StyledTable const> tables, ShownLines const& rows,
              ShownLines const& columns, DOM::CellStyle const* usual);

  /// Are positions without a cell seen, too? Not in a table for more than anybody fills in.
  [[nodiscard]] static bool coversEmptyCells(Workbook::StyledTable const& table) noexcept;

  /// Goes on to a row, which must be the next one.
  void advance(std::uint32_t row);

  /// Does a table have a position of the current row, perhaps?
  [[nodiscard]] bool isInTables() const noexcept { return _row < _end; }
  /// Is this position of the current row seen in a table, even without a cell?
  [[nodiscard]] bool covers(std::uint32_t column) const noexcept {
    PictureArea const* const area = _areas.find(column);
    return area != nullptr && coversEmptyCells(_tables[area->index]);
  }
  /// The style of a position of the current row: the table's, and `own` over it, which may be null.
  /// Lasts as long as this object, or as `own` where there is no table.
  [[nodiscard]] Style const* layOver(Style const* own, std::uint32_t column);

private:
  /// Key from which the style of a position follows.
  struct Key {
    Style const* own;
    Workbook::TableStyle const* style;
    Workbook::TableLine row;
    Workbook::TableLine column;

    friend bool operator==(Key const&, Key const&) = default;
  };
  struct KeyHash {
    std::size_t operator()(Key const& key) const noexcept;
  };

  std::span<Workbook::StyledTable const> _tables;
  ShownLines const& _rows;
  ShownLines const& _columns;
  DOM::CellStyle _usual;
  AreaSweep _areas;
  std::uint32_t _row = 0;
  std::uint32_t _end = 0;  ///< the row after the last one of the tables that have begun
  DOM::SharedObjectFactory _factory;
  std::unordered_map<Key, DOM::SharedCellStylePtr, KeyHash> _known;
};

}  // namespace Zorv::Render
