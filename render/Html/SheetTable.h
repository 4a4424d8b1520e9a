#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "render/Html/CellMarkup.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// Writer of a sheet as a table with headings.
///
/// Rows are written in blocks, so that a browser lays out only those that are seen. A block never
/// ends inside a merged cell. Borrows its arguments.
class SheetTable {
public:
  /// `className` is the class of the table, whose widths and heights are added to the styles.
  SheetTable(SheetPicture const& sheet, std::string className, StyleSheet& styles,
             PageGraphics& graphics);

  /// Appends the table. Linear in the positions of the sheet; long runs of positions without a cell
  /// are one element.
  void append(std::string& out);

private:
  void addGridStyles();
  void appendHeadings(std::string& out);
  void appendRow(std::string& out, std::uint32_t row);
  void appendCell(std::string& out, PictureCell const& cell);
  /// Appends the positions without a cell from `_nextColumn` on, up to a column.
  void appendGap(std::string& out, std::uint32_t end);
  void appendEmpty(std::string& out, std::uint32_t column, std::uint32_t count);
  [[nodiscard]] std::uint32_t findBlockEnd(std::uint32_t begin);
  void beginBlock(std::string& out, std::uint32_t begin, std::uint32_t end);
  /// Appends the attributes that put a cell into its place.
  void appendPlace(std::string& out, std::uint32_t column, std::uint32_t columnCount) const;
  [[nodiscard]] std::string const& classOfPlace(std::uint32_t column, std::uint32_t columnCount);
  /// Of rows of the picture: half-open.
  [[nodiscard]] double sumHeights(std::size_t begin, std::size_t end) const noexcept;
  [[nodiscard]] std::uint32_t lookAt(std::uint32_t row, std::uint32_t column) const noexcept;
  [[nodiscard]] bool isCovered(std::uint32_t column) const noexcept {
    return _occupiedUntil[column] > _row;
  }

  SheetPicture const& _sheet;
  std::string _className;
  StyleSheet& _styles;
  CellMarkup _cells;
  double _rowHeight = 0;                      ///< of most rows
  std::vector<std::uint32_t> _occupiedUntil;  ///< by column: the row below its last cell so far
  std::vector<std::string> _frozenClasses;    ///< by column
  std::size_t _nextCell = 0;                  ///< index in the sheet's cells
  std::uint32_t _row = 0;
  std::uint32_t _nextColumn = 0;  ///< of the row, not yet written
  bool _isInSequence = true;      ///< the next column follows the last one written
};

}  // namespace Zorv::Render
