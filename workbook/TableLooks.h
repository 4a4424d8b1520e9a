#pragma once

#include <cstdint>

#include "DOM/CellStyle.h"
#include "workbook/Sheet.h"

// What the styles of tables give to cells.
namespace Zorv::Workbook {

/// The place of a row or a column in a table, as far as the table's style tells it from others.
/// Positions of equal places look alike.
struct TableLine {
  bool isFirst = false;       ///< of the table
  bool isLast = false;        ///< of the table
  bool isHead = false;        ///< the header row; the first column, if it is marked
  bool isFoot = false;        ///< the totals row; the last column, if it is marked
  bool beginsBody = false;    ///< the first one that stripes may cover
  bool endsBody = false;      ///< the last one that stripes may cover
  std::uint8_t stripe = 0;    ///< 1 and 2 in turn; 0: it is in none
  bool beginsStripe = false;  ///< the first line of its stripe
  bool endsStripe = false;    ///< the last line of its stripe

  friend auto operator<=>(TableLine const&, TableLine const&) = default;
};

/// The place of a row of the sheet in a table, which it must cross.
[[nodiscard]] TableLine placeRow(StyledTable const& table, unsigned long row) noexcept;
/// The same for a column.
[[nodiscard]] TableLine placeColumn(StyledTable const& table, unsigned long column) noexcept;

/// The style of a position in a table that lies over the table's style. A property of `own` counts
/// if it differs from that of `usual`, the style of cells without one, since programs write all
/// properties into each cell; else the table's counts.
[[nodiscard]] DOM::CellStyle layOverTable(DOM::CellStyle own, DOM::CellStyle const& usual,
                                          TableStyle const& style, TableLine const& row,
                                          TableLine const& column);

/// The table with a style that covers a position, or null; of several, the first.
[[nodiscard]] StyledTable const* findStyledTable(Sheet const& sheet, unsigned long row,
                                                 unsigned long column) noexcept;

}  // namespace Zorv::Workbook
