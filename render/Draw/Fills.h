#pragma once

#include <cstdint>
#include <vector>

#include "render/Draw/Cairo.h"
#include "render/Draw/PatternTiles.h"
#include "render/Draw/SheetGeometry.h"

namespace Zorv::Render::Draw {

/// Paints the backgrounds of cells: solid, patterns, gradients, and colours of colour scales.
///
/// A cell without a fill shows the paper. Neighbours of one colour are painted at once.
/// Ownership: borrows the geometry and the tiles.
class FillPainter {
public:
  FillPainter(SheetGeometry const& geometry, PatternTiles& tiles);

  /// Paints positions without cells that have the look of their row or column, then the cells.
  void paint(cairo_t* cairo, LineBlock const& lines, std::vector<PictureCell const*> const& cells);

private:
  void paintRow(cairo_t* cairo, std::uint32_t row, LineSpan const& columns);
  void paintGap(cairo_t* cairo, std::uint32_t row, LineSpan const& columns);
  void paintCell(cairo_t* cairo, PictureCell const& cell);
  void paintFill(cairo_t* cairo, CellFill const& fill, Box const& box);
  void paintSolid(cairo_t* cairo, DOM::Colour const& colour, Box const& box);
  /// Paints what paintSolid() holds back.
  void flush(cairo_t* cairo) noexcept;

  SheetGeometry const& _geometry;
  PatternTiles& _tiles;
  bool _hasFilledLines;  ///< rows or columns whose positions without cells are filled
  Box _pending;
  DOM::Colour _pendingColour;
};

}  // namespace Zorv::Render::Draw
