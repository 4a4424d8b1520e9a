#include "render/Draw/PatternTiles.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

namespace Zorv::Render::Draw {

namespace {

constexpr int tileSide = 8;

/// A row a byte, from the top; the highest bit is the leftmost dot.
using TileBits = std::array<std::uint8_t, tileSide>;

std::optional<TileBits> findTileBits(DOM::FillPattern pattern) noexcept {
  using enum DOM::FillPattern;
  switch (pattern) {
    case MediumGray:
      return TileBits{0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55, 0xAA, 0x55};
    case DarkGray:
      return TileBits{0x77, 0xDD, 0x77, 0xDD, 0x77, 0xDD, 0x77, 0xDD};
    case LightGray:
      return TileBits{0x88, 0x22, 0x88, 0x22, 0x88, 0x22, 0x88, 0x22};
    case DarkHorizontal:
      return TileBits{0xFF, 0xFF, 0x00, 0x00, 0xFF, 0xFF, 0x00, 0x00};
    case DarkVertical:
      return TileBits{0xCC, 0xCC, 0xCC, 0xCC, 0xCC, 0xCC, 0xCC, 0xCC};
    case DarkDown:
      return TileBits{0xCC, 0x66, 0x33, 0x99, 0xCC, 0x66, 0x33, 0x99};
    case DarkUp:
      return TileBits{0x33, 0x66, 0xCC, 0x99, 0x33, 0x66, 0xCC, 0x99};
    case DarkGrid:
      return TileBits{0xCC, 0xCC, 0x33, 0x33, 0xCC, 0xCC, 0x33, 0x33};
    case DarkTrellis:
      return TileBits{0xFF, 0x66, 0xFF, 0x99, 0xFF, 0x66, 0xFF, 0x99};
    case LightHorizontal:
      return TileBits{0xFF, 0x00, 0x00, 0x00, 0xFF, 0x00, 0x00, 0x00};
    case LightVertical:
      return TileBits{0x88, 0x88, 0x88, 0x88, 0x88, 0x88, 0x88, 0x88};
    case LightDown:
      return TileBits{0x88, 0x44, 0x22, 0x11, 0x88, 0x44, 0x22, 0x11};
    case LightUp:
      return TileBits{0x11, 0x22, 0x44, 0x88, 0x11, 0x22, 0x44, 0x88};
    case LightGrid:
      return TileBits{0xFF, 0x88, 0x88, 0x88, 0xFF, 0x88, 0x88, 0x88};
    case LightTrellis:
      return TileBits{0x88, 0x55, 0x22, 0x55, 0x88, 0x55, 0x22, 0x55};
    case Gray125:
      return TileBits{0x88, 0x00, 0x22, 0x00, 0x88, 0x00, 0x22, 0x00};
    case Gray0625:
      return TileBits{0x88, 0x00, 0x00, 0x00, 0x22, 0x00, 0x00, 0x00};
    case None:
    case Solid:
    case Gradient:
      return std::nullopt;
  }
  return std::nullopt;
}

SurfacePtr makeTileSurface(bool ofVectors) {
  cairo_rectangle_t const extents{0, 0, tileSide, tileSide};
  return SurfacePtr(ofVectors
                        ? cairo_recording_surface_create(CAIRO_CONTENT_COLOR_ALPHA, &extents)
                        : cairo_image_surface_create(CAIRO_FORMAT_ARGB32, tileSide, tileSide));
}

PatternPtr makePatternTile(DOM::FillPattern pattern, DOM::Colour const& colour, bool ofVectors) {
  auto const bits = findTileBits(pattern);
  if (!bits) {
    return nullptr;
  }
  SurfacePtr const surface = makeTileSurface(ofVectors);
  checkStatus(cairo_surface_status(surface.get()));
  CairoPtr const cairo = makeCairo(*surface);
  setColour(cairo.get(), colour);
  for (int y = 0; y < tileSide; ++y) {
    for (int x = 0; x < tileSide; ++x) {
      constexpr unsigned leftmost = 0x80;
      if (((*bits)[static_cast<std::size_t>(y)] & (leftmost >> static_cast<unsigned>(x))) != 0) {
        cairo_rectangle(cairo.get(), x, y, 1, 1);
      }
    }
  }
  cairo_fill(cairo.get());
  PatternPtr tile(cairo_pattern_create_for_surface(surface.get()));
  cairo_pattern_set_extend(tile.get(), CAIRO_EXTEND_REPEAT);
  cairo_pattern_set_filter(tile.get(), CAIRO_FILTER_NEAREST);
  checkStatus(cairo_pattern_status(tile.get()));
  return tile;
}

}  // namespace

cairo_pattern_t* PatternTiles::get(cairo_t* cairo, DOM::FillPattern pattern,
                                   DOM::Colour const& colour) {
  // More than a workbook for people has.
  constexpr std::size_t mostTiles = 4096;
  if (_tiles.size() == mostTiles) {
    _tiles.clear();
  }
  PatternPtr& tile = _tiles[{pattern, colour.red, colour.green, colour.blue, colour.alpha}];
  if (tile == nullptr) {
    bool const isForPaper =
        cairo_surface_get_type(cairo_get_target(cairo)) == CAIRO_SURFACE_TYPE_PDF;
    tile = makePatternTile(pattern, colour, isForPaper);
  }
  return tile.get();
}

}  // namespace Zorv::Render::Draw
