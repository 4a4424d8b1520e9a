#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "render/Picture.h"
#include "render/Terminal/Canvas.h"
#include "render/Terminal/CharacterGrid.h"
#include "render/Terminal/Glyphs.h"
#include "render/Terminal/RowBorders.h"

namespace Zorv::Render {

/// Where a line of text may stand.
struct TextPlace {
  Stretch own;   ///< of the cell
  Stretch room;  ///< with empty neighbours
  DOM::HorizontalAlignment alignment;
};

/// Paints cells on the lines of one row.
class CellPainter {
public:
  /// `borders` and `cells` are those of the row. Borrows everything but the cells.
  CellPainter(SheetPicture const& sheet, CharacterGrid const& grid, RowBorders const& borders,
              RowCells const& cells, bool hasColours, Canvas& canvas);

  /// The fills of the positions of a row that have no cell.
  void paintLine(std::size_t row);
  /// The ground of the border below a row: the fill that the rows have in common.
  void paintBorderLine(std::size_t row, RowCells const& cells, RowCells const& nextCells);
  /// The fill of a cell. It reaches over the place of the border after it.
  void paintGround(PictureCell const& cell);
  /// The bar, the icon and the text of a cell; all grounds must be painted before.
  void paintContent(PictureCell const& cell);

private:
  [[nodiscard]] CellFill const& findLineFill(std::size_t row, std::size_t column) const noexcept;
  [[nodiscard]] CellFill findFill(PictureCell const& cell) const;
  /// The fills of a row, one for each column.
  [[nodiscard]] std::vector<DOM::Colour> findColours(std::size_t row, RowCells const& cells) const;
  void paintFill(CellFill const& fill, Stretch places, Stretch lines);
  [[nodiscard]] Stretch findBarPlaces(PictureCell const& cell, Stretch places) const noexcept;
  void paintIcon(PictureCell const& cell, Stretch& places, std::size_t line);
  void paintText(PictureCell const& cell, Stretch own, Stretch lines);
  void paintPieces(PictureCell const& cell, Stretch own, Stretch lines);
  void paintTextLine(PictureCell const& cell, TextPlace const& text, std::size_t line,
                     GlyphLine const& glyphs);
  [[nodiscard]] Stretch findRoom(PictureCell const& cell, Stretch own) const noexcept;
  [[nodiscard]] std::uint32_t countFreeBefore(PictureCell const& cell) const noexcept;
  [[nodiscard]] std::uint32_t countFreeAfter(PictureCell const& cell) const noexcept;
  [[nodiscard]] bool hasBorder(std::uint32_t column) const noexcept;
  void leaveGap(Stretch& places) const noexcept;
  [[nodiscard]] Stretch withBorderAfter(Stretch places, std::size_t endColumn) const noexcept;
  [[nodiscard]] CharacterStyle findStyle(PictureCell const& cell, std::size_t run) const;

  SheetPicture const& _sheet;
  CharacterGrid const& _grid;
  RowBorders const& _borders;
  std::vector<bool> _isFree;  ///< columns into which texts may run
  bool _hasColours;
  Canvas& _canvas;
};

}  // namespace Zorv::Render
