#pragma once

#include <cairo.h>

#include <cmath>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "render/Drawing.h"

namespace Zorv::Render::Tests {

/// The file that a picture is drawn as.
[[nodiscard]] inline std::string drawFile(Picture const& picture, DrawingFormat format,
                                          DrawOptions const& options = {}) {
  std::string file;
  draw(picture, format, options, [&](std::string_view bytes) { file += bytes; });
  return file;
}

/// Pixels of a PNG file.
class Pixels {
public:
  explicit Pixels(std::string_view png)
      : _surface(cairo_image_surface_create_from_png_stream(&read, &png), &cairo_surface_destroy) {}

  [[nodiscard]] bool isValid() const {
    return cairo_surface_status(_surface.get()) == CAIRO_STATUS_SUCCESS;
  }
  [[nodiscard]] int width() const { return cairo_image_surface_get_width(_surface.get()); }
  [[nodiscard]] int height() const { return cairo_image_surface_get_height(_surface.get()); }
  [[nodiscard]] DOM::Colour at(int x, int y) const {
    unsigned pixel = 0;
    std::memcpy(
        &pixel,
        cairo_image_surface_get_data(_surface.get()) +
            static_cast<std::ptrdiff_t>(y) * cairo_image_surface_get_stride(_surface.get()) +
            static_cast<std::ptrdiff_t>(x) * 4,
        sizeof pixel);
    return {static_cast<std::uint8_t>(pixel >> 16U), static_cast<std::uint8_t>(pixel >> 8U),
            static_cast<std::uint8_t>(pixel)};
  }

private:
  static cairo_status_t read(void* rest, unsigned char* bytes, unsigned size) {
    auto& png = *static_cast<std::string_view*>(rest);
    if (png.size() < size) {
      return CAIRO_STATUS_READ_ERROR;
    }
    png.copy(reinterpret_cast<char*>(bytes), size);
    png.remove_prefix(size);
    return CAIRO_STATUS_SUCCESS;
  }

  std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> _surface;
};

/// A sheet drawn as a PNG.
class DrawnPng {
public:
  explicit DrawnPng(Picture const& picture, DrawOptions const& options = {})
      : _scale(options.scale), _pixels(drawFile(picture, DrawingFormat::Png, options)) {}

  [[nodiscard]] int width() const { return _pixels.width(); }
  [[nodiscard]] int height() const { return _pixels.height(); }
  /// The colour of the pixel whose top left corner is at a place of the sheet, in CSS pixels.
  [[nodiscard]] DOM::Colour at(double x, double y) const {
    double const margin = std::round(drawingMargin * _scale);
    return _pixels.at(static_cast<int>(std::lround(x * _scale + margin)),
                      static_cast<int>(std::lround(y * _scale + margin)));
  }
  /// The share of pixels in a rectangle of the sheet that are not white.
  [[nodiscard]] double inkIn(double left, double top, double right, double bottom) const {
    int inked = 0;
    int all = 0;
    for (double y = top; y < bottom; ++y) {
      for (double x = left; x < right; ++x, ++all) {
        inked += at(x, y) == DOM::Colour{255, 255, 255} ? 0 : 1;
      }
    }
    return all == 0 ? 0 : static_cast<double>(inked) / all;
  }

private:
  double _scale;
  Pixels _pixels;
};

}  // namespace Zorv::Render::Tests
