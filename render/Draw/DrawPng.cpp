#include "render/Draw/DrawPng.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "Utils/Exceptions.h"
#include "render/Draw/Paper.h"
#include "render/Draw/PngWriter.h"
#include "render/Draw/SheetPainter.h"

namespace Zorv::Render::Draw {

namespace {

struct PixelSize {
  std::uint32_t width = 0;
  std::uint32_t height = 0;
};

PixelSize measurePng(SheetGeometry const& geometry, DrawOptions const& options) {
  constexpr double widest = 1'000'000;
  constexpr double million = 1'000'000;
  auto const toPixels = [&](double length) {
    return std::ceil(std::round(drawingMargin * options.scale) * 2 + length * options.scale);
  };
  double const width = toPixels(geometry.getWidth());
  double const height = toPixels(geometry.getHeight());
  if (width > widest || width * height > static_cast<double>(options.pixelLimit)) {
    throw BaseRuntimeError(
        fmt::format("cannot draw: the picture would be {:.0f} x {:.0f} pixels, more than {:.0f} "
                    "across or {:.0f} "
                    "million in all; draw a smaller range or at a smaller scale",
                    width, height, widest, static_cast<double>(options.pixelLimit) / million));
  }
  return {static_cast<std::uint32_t>(width), static_cast<std::uint32_t>(height)};
}

/// Draws a sheet from the top down, a band of rows of pixels at a time.
class BandPainter {
public:
  BandPainter(SheetGeometry const& geometry, PixelSize const& size, DrawOptions const& options)
      : _size(size),
        _scale(options.scale),
        _margin(std::round(drawingMargin * options.scale)),
        _painter(geometry, _resources,
                 {.hasGridLines = geometry.getSheet().showsGridLines, .budget = options.budget}) {
    constexpr std::uint32_t pixelsOfBand = 4'000'000;
    constexpr std::uint32_t highestBand = 512;
    _bandHeight = std::min({std::max(pixelsOfBand / size.width, 1U), highestBand, size.height});
    auto const pixels = std::uint64_t{size.width} * _bandHeight;
    if (options.budget != nullptr) {
      // The band, the tile that it is copied from, and the rows of the writer.
      options.budget->takeMemory(pixels * 2 * sizeof(std::uint32_t));
    }
    _pixels.resize(pixels);
  }

  void write(PngWriter& writer) {
    for (std::uint32_t top = 0; top < _size.height; top += _bandHeight) {
      std::uint32_t const rows = std::min(_bandHeight, _size.height - top);
      for (std::uint32_t left = 0; left < _size.width; left += widestTile) {
        paintTile(left, std::min(widestTile, _size.width - left), top, rows);
      }
      for (std::uint32_t row = 0; row < rows; ++row) {
        writer.addRow(std::span(_pixels).subspan(std::size_t{row} * _size.width, _size.width));
      }
    }
  }

private:
  /// Cairo draws no surfaces of more than 32,767 pixels.
  static constexpr std::uint32_t widestTile = 16384;

  void paintTile(std::uint32_t left, std::uint32_t width, std::uint32_t top, std::uint32_t height) {
    auto* const data = reinterpret_cast<unsigned char*>(_pixels.data() + left);
    SurfacePtr const surface(cairo_image_surface_create_for_data(
        data, CAIRO_FORMAT_RGB24, static_cast<int>(width), static_cast<int>(height),
        static_cast<int>(_size.width * sizeof(std::uint32_t))));
    checkStatus(cairo_surface_status(surface.get()));
    CairoPtr const cairo = makeCairo(*surface);
    cairo_set_font_options(cairo.get(), makeFontOptions().get());
    setColour(cairo.get(), paperColour);
    cairo_paint(cairo.get());
    cairo_translate(cairo.get(), _margin - left, _margin - top);
    cairo_scale(cairo.get(), _scale, _scale);
    _painter.paint(cairo.get(),
                   {(left - _margin) / _scale, (top - _margin) / _scale,
                    (left + width - _margin) / _scale, (top + height - _margin) / _scale});
    cairo_surface_finish(surface.get());
  }

  PixelSize _size;
  double _scale;
  double _margin;  ///< in pixels
  PaintResources _resources;
  SheetPainter _painter;
  std::uint32_t _bandHeight = 1;
  std::vector<std::uint32_t> _pixels;
};

}  // namespace

void drawPng(Picture const& picture, DrawOptions const& options, ByteSink const& sink) {
  SheetGeometry const geometry(picture.sheets.front(), PixelGrid(options.scale));
  PixelSize const size = measurePng(geometry, options);
  BandPainter painter(geometry, size, options);
  PngWriter writer(sink, size.width, size.height, options.scale);
  painter.write(writer);
  writer.finish();
}

}  // namespace Zorv::Render::Draw
