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

/// The first place of a group's or an image's number in a file.
std::size_t findNumber(std::string_view file) noexcept {
  for (std::size_t place = 0; place != std::string_view::npos;
       place = file.find_first_of("\"#", place + 1)) {
    for (std::string_view const name : {"\"surface", "#surface", "\"image", "#image"}) {
      if (file.substr(place).starts_with(name)) {
        return place + name.size();
      }
    }
  }
  return std::string_view::npos;
}

/// Cairo numbers groups and images by a counter of the process. Numbers them from 0 instead, in
/// their order, so that equal pictures give equal files. No text of a workbook is in the file as
/// text.
void renumber(std::string_view file, ByteSink const& sink) {
  std::unordered_map<std::string_view, std::string> numbers;
  for (std::size_t place = findNumber(file); place != std::string_view::npos;
       place = findNumber(file)) {
    sink(file.substr(0, place));
    file.remove_prefix(place);
    std::string_view const number = file.substr(0, file.find_first_not_of("0123456789"));
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
  std::string file;
  OutputStream stream([&](std::string_view bytes) { file += bytes; });
  SurfacePtr const surface(cairo_svg_surface_create_for_stream(
      &OutputStream::write, &stream, width * options.scale, height * options.scale));
  checkStatus(cairo_surface_status(surface.get()));
  cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
  PaintResources resources;
  SurfaceFinisher const finisher(surface.get());
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
  renumber(file, sink);
}

}  // namespace Zorv::Render::Draw
