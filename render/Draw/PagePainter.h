#pragma once

#include "render/Draw/Headings.h"
#include "render/Draw/Pages.h"
#include "render/Draw/SheetPainter.h"

namespace Zorv::Render::Draw {

/// Painter of what a sheet's pages show between their margins: titles, cells and headings.
///
/// Ownership: borrows the geometry and the resources, and the budget of the setting.
class PagePainter {
public:
  PagePainter(SheetGeometry const& geometry, PaintResources& resources, PaintSetting const& setting)
      : _geometry(geometry),
        _cells(geometry, resources, setting),
        _headings(geometry, resources.typesetter) {}

  /// Paints a page. The context has the corner of the paper as its origin and a scale of one unit
  /// for each CSS pixel. Throws what the budget throws.
  void paint(cairo_t* cairo, Page const& page, double scale);

private:
  /// Piece of the sheet along one direction, and its place on the page.
  struct Part {
    Extent extent;
    double start = 0;
  };

  void moveToPage(cairo_t* cairo, Page const& page, double scale) const;
  void paintPart(cairo_t* cairo, Part const& rows, Part const& columns);

  SheetGeometry const& _geometry;
  SheetPainter _cells;
  HeadingPainter _headings;
};

}  // namespace Zorv::Render::Draw
