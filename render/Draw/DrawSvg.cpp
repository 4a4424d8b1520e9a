#include "render/Draw/DrawSvg.h"

#include <cairo-svg.h>

#include <string>
#include <unordered_map>

#include "render/Draw/OutputStream.h"
#include "render/Draw/Paper.h"
#include "render/Draw/SheetPainter.h"

namespace Zorv::Render::Draw {

namespace {

/// Cairo keeps what it is told to draw until the file is written.
void takeMemoryOfSheet(SheetPicture const& sheet, WorkBudget* budget) {
  constexpr std::uint64_t bytesOfCell = 256;
  constexpr std::uint64_t bytesOfCharacter = 32;
  if (budget == nullptr) {
    return;
  }
  for (PictureCell const& cell : sheet.cells) {
    budget->takeMemory(bytesOfCell + cell.text.size() * bytesOfCharacter);
  }
}

/// Cairo names the groups of a file by a counter of the process. Counts them from 0 instead, in
/// their order, so that equal pictures give equal files. No text of a workbook is in the file as
/// text.
void renumberGroups(std::string_view file, ByteSink const& sink) {
  constexpr std::string_view name = "surface";
  std::unordered_map<std::string_view, std::string> numbers;
  for (std::size_t place = file.find(name); place != file.npos; place = file.find(name)) {
    sink(file.substr(0, place + name.size()));
    file.remove_prefix(place + name.size());
    std::size_t const end = file.find_first_not_of("0123456789");
    std::string_view const number = file.substr(0, end);
    sink(numbers.try_emplace(number, std::to_string(numbers.size())).first->second);
    file.remove_prefix(number.size());
  }
  sink(file);
}

}  // namespace

void drawSvg(Picture const& picture, DrawOptions const& options, ByteSink const& sink) {
  SheetPicture const& sheet = picture.sheets.front();
  SheetGeometry const geometry(sheet, PixelGrid());
  takeMemoryOfSheet(sheet, options.budget);
  double const width = geometry.getWidth() + 2 * drawingMargin;
  double const height = geometry.getHeight() + 2 * drawingMargin;
  PaintResources resources;
  std::string file;
  OutputStream stream([&](std::string_view bytes) { file += bytes; });
  SurfacePtr const surface(cairo_svg_surface_create_for_stream(
      &OutputStream::write, &stream, width * options.scale, height * options.scale));
  checkStatus(cairo_surface_status(surface.get()));
  cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
  CairoPtr const cairo = makeCairo(*surface);
  setColour(cairo.get(), paperColour);
  cairo_paint(cairo.get());
  cairo_scale(cairo.get(), options.scale, options.scale);
  cairo_translate(cairo.get(), drawingMargin, drawingMargin);
  SheetPainter painter(geometry, resources,
                       {.hasGridLines = sheet.showsGridLines, .budget = options.budget});
  painter.paint(cairo.get(), {-drawingMargin, -drawingMargin, width, height});
  cairo_surface_finish(surface.get());
  stream.check(cairo_surface_status(surface.get()));
  renumberGroups(file, sink);
}

}  // namespace Zorv::Render::Draw
