#pragma once

#include <cstdint>
#include <map>
#include <tuple>

#include "render/Draw/Cairo.h"

namespace Zorv::Render::Draw {

/// Tiles of the lines and dots of fills (ISO/IEC 29500-1, 18.18.55), each made once: of vectors for
/// a PDF, so that they are sharp on paper, else of pixels.
///
/// Ownership: serves one drawing context.
///
/// They must outlive the finishing of the surface that they are drawn on; see SurfaceFinisher.
/// Threads: needs exclusive access.
class PatternTiles {
public:
  /// A tile of 8 x 8 CSS pixels, to be repeated over a cell; transparent between its lines or dots.
  /// Null for fills without them. Good until the next call. Throws like checkStatus().
  [[nodiscard]] cairo_pattern_t* get(cairo_t* cairo, DOM::FillPattern pattern,
                                     DOM::Colour const& colour);

private:
  /// The pattern, and red, green, blue and alpha.
  using Key = std::tuple<DOM::FillPattern, std::uint8_t, std::uint8_t, std::uint8_t, std::uint8_t>;

  std::map<Key, PatternPtr> _tiles;
};

}  // namespace Zorv::Render::Draw
