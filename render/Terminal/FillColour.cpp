#include "render/Terminal/FillColour.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <numbers>

namespace Zorv::Render {

namespace {

using DOM::FillPattern;

constexpr DOM::Colour unfilledPaper{255, 255, 255};

/// The part of a pattern's area that its lines or dots cover.
double findCoverage(FillPattern pattern) noexcept {
  switch (pattern) {
    case FillPattern::DarkGray:
    case FillPattern::DarkGrid:
    case FillPattern::DarkTrellis:
      return 0.75;
    case FillPattern::MediumGray:
    case FillPattern::DarkHorizontal:
    case FillPattern::DarkVertical:
    case FillPattern::DarkDown:
    case FillPattern::DarkUp:
      return 0.5;
    case FillPattern::LightGrid:
    case FillPattern::LightTrellis:
      return 0.4375;
    case FillPattern::Gray125:
      return 0.125;
    case FillPattern::Gray0625:
      return 0.0625;
    default:
      return 0.25;
  }
}

/// How far a place lies along a gradient, 0 to 1.
double findPosition(DOM::GradientFill const& gradient, double x, double y) noexcept {
  if (gradient.type == DOM::GradientType::Path) {
    double const across = std::max({gradient.left - x, x - gradient.right, 0.0});
    double const down = std::max({gradient.top - y, y - gradient.bottom, 0.0});
    double const reach =
        std::max({gradient.left, 1 - gradient.right, gradient.top, 1 - gradient.bottom, 0.001});
    return std::clamp(std::max(across, down) / reach, 0.0, 1.0);
  }
  double const angle = gradient.degree * std::numbers::pi / 180;
  double const along = (x - 0.5) * std::cos(angle) + (y - 0.5) * std::sin(angle);
  double const reach = (std::abs(std::cos(angle)) + std::abs(std::sin(angle))) / 2;
  return std::isfinite(along) ? std::clamp(0.5 + along / (2 * reach), 0.0, 1.0) : 0.0;
}

DOM::Colour findGradientColour(DOM::GradientFill const& gradient, double position) noexcept {
  auto const& stops = gradient.stops;
  if (stops.empty()) {
    return unfilledPaper;
  }
  auto const after = std::ranges::find_if(
      stops, [position](DOM::GradientStop const& stop) { return stop.position >= position; });
  if (after == stops.begin() || after == stops.end()) {
    return after == stops.end() ? stops.back().colour : after->colour;
  }
  auto const before = std::prev(after);
  double const length = after->position - before->position;
  return mix(before->colour, after->colour,
             length > 0 ? (position - before->position) / length : 1.0);
}

}  // namespace

DOM::Colour mix(DOM::Colour const& first, DOM::Colour const& second, double part) noexcept {
  auto const between = [part](std::uint8_t a, std::uint8_t b) {
    return static_cast<std::uint8_t>(std::lround(a + (b - a) * part));
  };
  return {between(first.red, second.red), between(first.green, second.green),
          between(first.blue, second.blue)};
}

DOM::Colour findFillColour(CellFill const& fill, double x, double y) noexcept {
  switch (fill.pattern) {
    case FillPattern::None:
      return unfilledPaper;
    case FillPattern::Solid:
      return fill.colour;
    case FillPattern::Gradient:
      return fill.gradient ? findGradientColour(*fill.gradient, findPosition(*fill.gradient, x, y))
                           : unfilledPaper;
    default:
      return mix(fill.colour, fill.patternColour, findCoverage(fill.pattern));
  }
}

}  // namespace Zorv::Render
