#pragma once

#include <algorithm>
#include <cmath>

namespace Zorv::Render::Draw {

/// Pixels of the drawing, on which lines lie exactly, so that they come out sharp. What is drawn
/// for any resolution has a grid of CSS pixels.
class PixelGrid {
public:
  explicit PixelGrid(double scale = 1) noexcept : _scale(scale) {}

  /// Pixels for each CSS pixel.
  [[nodiscard]] double getScale() const noexcept { return _scale; }
  /// The nearest edge between pixels.
  [[nodiscard]] double snap(double place) const noexcept {
    return std::round(place * _scale) / _scale;
  }
  /// The nearest width of whole pixels; not less than one.
  [[nodiscard]] double thickness(double width) const noexcept {
    return std::max(1.0, std::round(width * _scale)) / _scale;
  }

private:
  double _scale;
};

}  // namespace Zorv::Render::Draw
