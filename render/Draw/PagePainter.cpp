#include "render/Draw/PagePainter.h"

#include <array>

#include "render/Draw/Paper.h"
#include "render/Drawing.h"

namespace Zorv::Render::Draw {

namespace {

/// An area with the lines at its edges. Those at the outer edges of a sheet lie half outside;
/// inside it, a page shows the thinnest line of its neighbours.
Box withOuterLines(Box const& area, SheetGeometry const& geometry) noexcept {
  double const left = area.left <= 0 ? drawingMargin : gridLineWidth;
  double const top = area.top <= 0 ? drawingMargin : gridLineWidth;
  double const right = area.right >= geometry.getWidth() ? drawingMargin : 0;
  double const bottom = area.bottom >= geometry.getHeight() ? drawingMargin : 0;
  return {area.left - left, area.top - top, area.right + right, area.bottom + bottom};
}

}  // namespace

/// From right to left, the titles and the headings stand at the right.
void PagePainter::paint(cairo_t* cairo, Page const& page, double scale) {
  bool const isMirrored = _geometry.getSheet().rightToLeft;
  HeadingSize const headings = findHeadingSize(_geometry.getSheet());
  double const titles = page.titleColumns.length();
  double const cells = page.columns.length();
  std::array<Part, 2> const rows{
      {{page.titleRows, headings.height}, {page.rows, headings.height + page.titleRows.length()}}};
  std::array<Part, 2> const columns{{{page.titleColumns, isMirrored ? cells : headings.width},
                                     {page.columns, isMirrored ? 0 : headings.width + titles}}};
  SavedState const saved(cairo);
  moveToPage(cairo, page, scale);
  for (Part const& down : rows) {
    for (Part const& across : columns) {
      if (down.extent.length() > 0 && across.extent.length() > 0) {
        paintPart(cairo, down, across);
      }
    }
  }
  if (headings.width > 0) {
    for (Part const& down : rows) {
      _headings.paintRows(cairo, down.extent, down.start, isMirrored ? cells + titles : 0);
    }
    for (Part const& across : columns) {
      _headings.paintColumns(cairo, across.extent, across.start);
    }
  }
}

/// To the corner of what the page shows, in the sheet's scale.
void PagePainter::moveToPage(cairo_t* cairo, Page const& page, double scale) const {
  PageSetup const& setup = _geometry.getSheet().page;
  Box const printed = findPrintedPaper(setup);
  HeadingSize const headings = findHeadingSize(_geometry.getSheet());
  double const width = headings.width + page.titleColumns.length() + page.columns.length();
  double const height = headings.height + page.titleRows.length() + page.rows.length();
  double const across = setup.isCentredAcross ? (printed.width() - width * scale) / 2 : 0;
  double const down = setup.isCentredDown ? (printed.height() - height * scale) / 2 : 0;
  cairo_translate(cairo, printed.left + across, printed.top + down);
  cairo_scale(cairo, scale, scale);
}

void PagePainter::paintPart(cairo_t* cairo, Part const& rows, Part const& columns) {
  Extent const& across = columns.extent;
  double const width = _geometry.getWidth();
  Box const area =
      _geometry.getSheet().rightToLeft
          ? Box{width - across.to, rows.extent.from, width - across.from, rows.extent.to}
          : Box{across.from, rows.extent.from, across.to, rows.extent.to};
  SavedState const saved(cairo);
  cairo_translate(cairo, columns.start - area.left, rows.start - area.top);
  Box const seen = withOuterLines(area, _geometry);
  cairo_rectangle(cairo, seen.left, seen.top, seen.width(), seen.height());
  cairo_clip(cairo);
  _cells.paint(cairo, area);
}

}  // namespace Zorv::Render::Draw
