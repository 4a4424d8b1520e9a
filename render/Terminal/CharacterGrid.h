#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "render/Picture.h"
#include "render/Terminal/Canvas.h"

namespace Zorv::Render {

/// Where the columns and rows of a sheet lie among the characters and lines of a terminal.
///
/// From left to right: the numbers of the rows, then the columns; the other way round in a sheet
/// that is laid out from right to left. A column is about as wide as its pixels, and wide enough
/// for its numbers. Columns are narrowed to what their cells hold if they do not all fit, and left
/// out at the end if that is not enough. A row has one line, more for texts that wrap or stand
/// upright.
///
/// Between two columns is a place for a border where some cell has one. Between two rows there is
/// one only where a table changes: rows that are ruled alike above and below stand close together.
class CharacterGrid {
public:
  /// `width` is that of the terminal; nothing: as many as the sheet needs, but not without end.
  /// If `barsStandApart`, a column has room for its bars beside its texts.
  CharacterGrid(SheetPicture const& sheet, std::optional<std::size_t> width, bool barsStandApart);

  /// The columns that fit; at least one if there is one.
  [[nodiscard]] std::size_t getColumnCount() const noexcept { return _columnCount; }
  [[nodiscard]] bool isRightToLeft() const noexcept { return _rightToLeft; }
  [[nodiscard]] std::size_t getWidth() const noexcept { return _numberWidth + _bodyWidth; }
  /// Of the numbers of the rows.
  [[nodiscard]] Stretch getNumberPlaces() const noexcept;

  /// The characters of adjacent columns, those that do not fit left out, with the borders between
  /// them.
  [[nodiscard]] Stretch findPlaces(std::uint32_t column, std::uint32_t count) const noexcept;
  /// The lines of adjacent rows, with the borders between them. Line 0 is the first below the
  /// headings.
  [[nodiscard]] Stretch findLines(std::uint32_t row, std::uint32_t count) const noexcept;

  /// The characters beside bars that the texts of a column need.
  [[nodiscard]] std::size_t getTextWidthBesideBars(std::uint32_t column) const noexcept {
    return _textWidths[column];
  }

  /// The place of the border before a column, or after the last. Nothing if there is none.
  [[nodiscard]] std::optional<std::size_t> findBorderPlace(std::size_t column) const noexcept;
  /// The line of the border above a row, or below the last.
  [[nodiscard]] std::optional<std::size_t> findBorderLine(std::size_t row) const noexcept;

private:
  void findBorders(SheetPicture const& sheet);
  void placeColumns(SheetPicture const& sheet, std::optional<std::size_t> width);
  void placeRows(SheetPicture const& sheet);
  void findRowBorders(SheetPicture const& sheet);
  [[nodiscard]] std::size_t toPlace(std::size_t logical, std::size_t width) const noexcept;

  bool _rightToLeft;
  std::size_t _numberWidth = 0;
  std::size_t _bodyWidth = 0;
  std::size_t _columnCount = 0;
  std::vector<bool> _hasColumnBorder;  ///< before each column, and after the last
  std::vector<bool> _hasRowBorder;
  std::vector<std::size_t> _textWidths;    ///< beside bars, of each column
  std::vector<std::size_t> _columnStarts;  ///< counted from the first column's side; and the end
  std::vector<std::size_t> _rowStarts;
};

/// The borders at the sides of a cell, numbered as those of CharacterGrid::findBorderPlace().
struct CellSides {
  std::size_t left = 0;
  std::size_t right = 0;
};

[[nodiscard]] CellSides findSides(SheetPicture const& sheet, PictureCell const& cell) noexcept;

/// Columns of a terminal that an icon and the gap after it take.
inline constexpr std::size_t iconWidth = 2;

/// The heading of a column: `AB`.
[[nodiscard]] std::string toColumnLetters(unsigned long column);

}  // namespace Zorv::Render
