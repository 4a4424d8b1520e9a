#include "render/Draw/DrawPdf.h"

#include <cairo-pdf.h>
#include <fmt/format.h>
#include <glib.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "render/Draw/OutputStream.h"
#include "render/Draw/Pages.h"
#include "render/Draw/Paper.h"
#include "render/Draw/SheetPainter.h"

namespace Zorv::Render::Draw {

namespace {

constexpr double pointsPerPixel = 72.0 / 96.0;

/// For titles: cairo refuses malformed UTF-8.
std::string toValidText(std::string const& text) {
  std::unique_ptr<gchar, decltype(&g_free)> const valid(
      g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())), &g_free);
  return valid.get();
}

/// An area with the lines at its edges. Those at the outer edges of a sheet lie half outside;
/// inside it, a page shows the thinnest line of its neighbours.
Box withOuterLines(Box const& area, SheetGeometry const& geometry) noexcept {
  double const left = area.left <= 0 ? drawingMargin : gridLineWidth;
  double const top = area.top <= 0 ? drawingMargin : gridLineWidth;
  double const right = area.right >= geometry.getWidth() ? drawingMargin : 0;
  double const bottom = area.bottom >= geometry.getHeight() ? drawingMargin : 0;
  return {area.left - left, area.top - top, area.right + right, area.bottom + bottom};
}

/// A file with its pages.
class PdfFile {
public:
  PdfFile(Picture const& picture, DrawOptions const& options, ByteSink const& sink)
      : _options(options), _stream(sink) {
    _surface.reset(cairo_pdf_surface_create_for_stream(&OutputStream::write, &_stream, 1, 1));
    checkStatus(cairo_surface_status(_surface.get()));
    cairo_pdf_surface_set_metadata(_surface.get(), CAIRO_PDF_METADATA_TITLE,
                                   toValidText(picture.name).c_str());
    // Not the time of drawing: equal pictures give equal files.
    for (auto const field : {CAIRO_PDF_METADATA_CREATE_DATE, CAIRO_PDF_METADATA_MOD_DATE}) {
      cairo_pdf_surface_set_metadata(_surface.get(), field, "1980-01-01T00:00:00Z");
    }
    _finisher.emplace(_surface.get());
    _cairo = makeCairo(*_surface);
  }

  PdfFile(PdfFile const&) = delete;
  PdfFile& operator=(PdfFile const&) = delete;
  /// An unfinished file gets no more bytes.
  ~PdfFile() { _stream.close(); }

  void addSheet(SheetPicture const& sheet) {
    SheetGeometry const geometry(sheet, PixelGrid());
    PageList const list = findPages(geometry, _options.pageLimit - _pageCount);
    SheetPainter painter(
        geometry, _resources,
        {.hasGridLines = sheet.page.printsGridLines, .hasLinks = true, .budget = _options.budget});
    if (!list.pages.empty()) {
      addBookmark(sheet.name);
    }
    for (Page const& page : list.pages) {
      addPage(sheet, list.scale, page, geometry, painter);
    }
  }

  void finish() {
    if (_pageCount == 0) {
      cairo_show_page(_cairo.get());
    }
    _cairo.reset();
    cairo_surface_finish(_surface.get());
    _stream.check(cairo_surface_status(_surface.get()));
  }

private:
  void addBookmark(std::string const& name) {
    cairo_pdf_surface_add_outline(_surface.get(), CAIRO_PDF_OUTLINE_ROOT, toValidText(name).c_str(),
                                  fmt::format("page={} pos=[0 0]", _pageCount + 1).c_str(),
                                  CAIRO_PDF_OUTLINE_FLAG_OPEN);
  }

  void addPage(SheetPicture const& sheet, double scale, Page const& page,
               SheetGeometry const& geometry, SheetPainter& painter) {
    Box const paper = findPaper(sheet.page);
    cairo_pdf_surface_set_size(_surface.get(), paper.width() * pointsPerPixel,
                               paper.height() * pointsPerPixel);
    Box const printed = findPrintedPaper(sheet.page);
    double const width = page.titleColumns.length() + page.columns.length();
    double const height = page.titleRows.length() + page.rows.length();
    SavedState const saved(_cairo.get());
    cairo_scale(_cairo.get(), pointsPerPixel, pointsPerPixel);
    cairo_translate(
        _cairo.get(),
        printed.left + (sheet.page.isCentredAcross ? (printed.width() - width * scale) / 2 : 0),
        printed.top + (sheet.page.isCentredDown ? (printed.height() - height * scale) / 2 : 0));
    cairo_scale(_cairo.get(), scale, scale);
    for (Extent const& rows : {page.titleRows, page.rows}) {
      for (Extent const& columns : {page.titleColumns, page.columns}) {
        if (rows.length() > 0 && columns.length() > 0) {
          paintPart(page, rows, columns, geometry, painter);
        }
      }
    }
    cairo_show_page(_cairo.get());
    ++_pageCount;
    _stream.check(cairo_status(_cairo.get()));
  }

  /// Places a part of the sheet beside the titles, or the titles themselves.
  void paintPart(Page const& page, Extent const& rows, Extent const& columns,
                 SheetGeometry const& geometry, SheetPainter& painter) {
    bool const isMirrored = geometry.getSheet().rightToLeft;
    double const before = columns == page.columns ? page.titleColumns.length() : 0;
    double const behind = columns == page.columns ? 0 : page.columns.length();
    double const top = rows == page.rows ? page.titleRows.length() : 0;
    double const left = isMirrored ? behind : before;
    Box const area = isMirrored ? Box{geometry.getWidth() - columns.to, rows.from,
                                      geometry.getWidth() - columns.from, rows.to}
                                : Box{columns.from, rows.from, columns.to, rows.to};
    SavedState const saved(_cairo.get());
    cairo_translate(_cairo.get(), left - area.left, top - area.top);
    Box const seen = withOuterLines(area, geometry);
    cairo_rectangle(_cairo.get(), seen.left, seen.top, seen.width(), seen.height());
    cairo_clip(_cairo.get());
    painter.paint(_cairo.get(), area);
  }

  DrawOptions const& _options;
  OutputStream _stream;
  SurfacePtr _surface;
  PaintResources _resources;
  std::optional<SurfaceFinisher> _finisher;
  CairoPtr _cairo;
  std::uint64_t _pageCount = 0;
};

}  // namespace

void drawPdf(Picture const& picture, DrawOptions const& options, ByteSink const& sink) {
  PdfFile file(picture, options, sink);
  for (SheetPicture const& sheet : picture.sheets) {
    file.addSheet(sheet);
  }
  file.finish();
}

}  // namespace Zorv::Render::Draw
