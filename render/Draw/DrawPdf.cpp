#include "render/Draw/DrawPdf.h"

#include <cairo-pdf.h>
#include <fmt/format.h>
#include <glib.h>

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>

#include "render/Draw/OutputStream.h"
#include "render/Draw/PageLines.h"
#include "render/Draw/PagePainter.h"

namespace Zorv::Render::Draw {

namespace {

constexpr double pointsPerPixel = 72.0 / 96.0;

/// For titles: cairo refuses malformed UTF-8.
std::string toValidText(std::string const& text) {
  std::unique_ptr<gchar, decltype(&g_free)> const valid(
      g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())), &g_free);
  return valid.get();
}

/// A sheet divided into pages, all of which are counted before the first one is drawn.
struct PlannedSheet {
  PlannedSheet(SheetPicture const& sheet, std::uint64_t pageLimit)
      : geometry(sheet, PixelGrid()), list(findPages(geometry, pageLimit)) {}

  SheetGeometry geometry;
  PageList list;
};

/// A file with its pages.
class PdfFile {
public:
  PdfFile(Picture const& picture, DrawOptions const& options, ByteSink const& sink)
      : _picture(picture), _options(options), _stream(sink) {
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

  void addSheet(PlannedSheet const& planned, std::uint64_t pageCount) {
    SheetPicture const& sheet = planned.geometry.getSheet();
    PagePainter painter(
        planned.geometry, _resources,
        {.hasGridLines = sheet.page.printsGridLines, .hasLinks = true, .budget = _options.budget});
    if (!planned.list.pages.empty()) {
      addBookmark(sheet.name);
    }
    _number = sheet.page.firstPageNumber.value_or(_number);
    std::uint64_t place = 0;
    for (Page const& page : planned.list.pages) {
      SavedState const saved(_cairo.get());
      beginPage(sheet.page);
      paintPageLines(_cairo.get(), _resources.typesetter, sheet,
                     {_picture.name, place++, _number++, pageCount});
      painter.paint(_cairo.get(), page, planned.list.scale);
      endPage();
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

  void beginPage(PageSetup const& setup) {
    Box const paper = findPaper(setup);
    cairo_pdf_surface_set_size(_surface.get(), paper.width() * pointsPerPixel,
                               paper.height() * pointsPerPixel);
    cairo_scale(_cairo.get(), pointsPerPixel, pointsPerPixel);
  }

  void endPage() {
    cairo_show_page(_cairo.get());
    ++_pageCount;
    _stream.check(cairo_status(_cairo.get()));
  }

  Picture const& _picture;
  DrawOptions const& _options;
  OutputStream _stream;
  SurfacePtr _surface;
  PaintResources _resources;
  std::optional<SurfaceFinisher> _finisher;
  CairoPtr _cairo;
  std::uint64_t _pageCount = 0;
  long _number = 1;  ///< of the next page
};

}  // namespace

void drawPdf(Picture const& picture, DrawOptions const& options, ByteSink const& sink) {
  std::deque<PlannedSheet> sheets;
  std::uint64_t pageCount = 0;
  for (SheetPicture const& sheet : picture.sheets) {
    sheets.emplace_back(sheet, options.pageLimit - pageCount);
    pageCount += sheets.back().list.pages.size();
  }
  PdfFile file(picture, options, sink);
  for (PlannedSheet const& sheet : sheets) {
    file.addSheet(sheet, pageCount);
  }
  file.finish();
}

}  // namespace Zorv::Render::Draw
