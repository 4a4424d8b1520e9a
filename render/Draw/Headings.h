#pragma once

#include "render/Draw/Cairo.h"
#include "render/Draw/Pages.h"
#include "render/Draw/Typesetter.h"

namespace Zorv::Render::Draw {

/// Room that the headings of a page take: the numbers of rows and the letters of columns. Nothing
/// if the sheet is printed without them.
struct HeadingSize {
  double width = 0;   ///< of the numbers
  double height = 0;  ///< of the letters
};

[[nodiscard]] HeadingSize findHeadingSize(SheetPicture const& sheet) noexcept;

/// Paints the headings of pages. Borrows both.
class HeadingPainter {
public:
  HeadingPainter(SheetGeometry const& geometry, Typesetter& typesetter) noexcept
      : _geometry(geometry), _typesetter(typesetter) {}

  /// Paints the letters above a part of the columns, whose edge on the page is at `start`.
  void paintColumns(cairo_t* cairo, Extent const& columns, double start);
  /// Paints the numbers before a part of the rows, whose top on the page is at `start`. `left` is
  /// the edge of the numbers.
  void paintRows(cairo_t* cairo, Extent const& rows, double start, double left);

private:
  void paintHeading(cairo_t* cairo, std::string const& text, Box const& box);

  SheetGeometry const& _geometry;
  Typesetter& _typesetter;
};

}  // namespace Zorv::Render::Draw
