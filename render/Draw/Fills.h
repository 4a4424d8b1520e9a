#pragma once

#include <cstdint>
#include <vector>

#include "render/Draw/Cairo.h"
#include "render/Draw/SheetGeometry.h"

namespace Zorv::Render::Draw {

/// Paints the backgrounds of cells: solid, patterns, gradients, and colours of colour scales.
///
/// A cell without a fill shows the paper. Neighbours of one colour are painted at once.
/// Ownership: borrows the geometry.
class FillPainter {
public:
  explicit FillPainter(SheetGeometry const& geometry);

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
  /// A tile of dots or lines; made at the first call.
  cairo_pattern_t* getTile(DOM::FillPattern pattern, DOM::Colour const& colour);

  SheetGeometry const& _geometry;
  bool _hasFilledLines;  ///< rows or columns whose positions without cells are filled
  Box _pending;
  DOM::Colour _pendingColour;
  /// The last tile that was needed: cells with a pattern come in groups.
  PatternPtr _tile;
  DOM::FillPattern _tilePattern = DOM::FillPattern::None;
  DOM::Colour _tileColour;
};

}  // namespace Zorv::Render::Draw
