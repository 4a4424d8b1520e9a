#pragma once

#include <cstddef>
#include <cstdint>

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
  /// `borders` are those of the row. Borrows everything.
  CellPainter(SheetPicture const& sheet, CharacterGrid const& grid, RowBorders const& borders,
              bool hasColours, Canvas& canvas)
      : _sheet(sheet), _grid(grid), _borders(borders), _hasColours(hasColours), _canvas(canvas) {}

  /// The fills of the positions of a row that have no cell.
  void paintLine(std::size_t row);
  /// The fill of a cell. It reaches over the places of the borders after and below it.
  void paintGround(PictureCell const& cell);
  /// The bar, the icon and the text of a cell; all grounds must be painted before.
  void paintContent(PictureCell const& cell);

private:
  void paintFill(CellFill const& fill, Stretch places, Stretch lines);
  void paintIcon(PictureCell const& cell, Stretch& places, std::size_t line);
  void paintText(PictureCell const& cell, Stretch own, Stretch lines);
  void paintPieces(PictureCell const& cell, Stretch own, Stretch lines);
  void paintTextLine(PictureCell const& cell, TextPlace const& text, std::size_t line,
                     GlyphLine const& glyphs);
  [[nodiscard]] Stretch findRoom(PictureCell const& cell, Stretch own) const noexcept;
  [[nodiscard]] std::uint32_t countFreeBefore(PictureCell const& cell,
                                              std::uint32_t most) const noexcept;
  [[nodiscard]] std::uint32_t countFreeAfter(PictureCell const& cell,
                                             std::uint32_t most) const noexcept;
  [[nodiscard]] bool hasBorder(std::uint32_t column) const noexcept;
  void leaveGap(Stretch& places) const noexcept;
  [[nodiscard]] Stretch withBorderAfter(Stretch places, std::size_t endColumn) const noexcept;
  [[nodiscard]] CharacterStyle findStyle(PictureCell const& cell, std::size_t run) const;

  SheetPicture const& _sheet;
  CharacterGrid const& _grid;
  RowBorders const& _borders;
  bool _hasColours;
  Canvas& _canvas;
};

}  // namespace Zorv::Render
