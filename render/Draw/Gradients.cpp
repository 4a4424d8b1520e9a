#include "render/Draw/Gradients.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

namespace Zorv::Render::Draw {

namespace {

using DOM::Colour;
using DOM::GradientStop;

/// Into 0 to 1, also what is not a number.
double toShare(double value) noexcept { return value > 0 ? std::min(value, 1.0) : 0; }

std::vector<GradientStop> orderStops(DOM::GradientFill const& gradient) {
  std::vector<GradientStop> stops = gradient.stops;
  for (GradientStop& stop : stops) {
    stop.position = toShare(stop.position);
  }
  std::ranges::stable_sort(stops, {}, &GradientStop::position);
  return stops;
}

std::uint8_t mixParts(std::uint8_t from, std::uint8_t to, double share) noexcept {
  return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

/// The colour at a place of a gradient, whose stops are in order.
Colour findColour(std::vector<GradientStop> const& stops, double place) noexcept {
  auto const after = std::ranges::upper_bound(stops, place, {}, &GradientStop::position);
  if (after == stops.begin() || after == stops.end()) {
    return after == stops.begin() ? stops.front().colour : stops.back().colour;
  }
  auto const before = after - 1;
  double const share = (place - before->position) / (after->position - before->position);
  Colour const& from = before->colour;
  Colour const& to = after->colour;
  return {mixParts(from.red, to.red, share), mixParts(from.green, to.green, share),
          mixParts(from.blue, to.blue, share), mixParts(from.alpha, to.alpha, share)};
}

void addBox(cairo_t* cairo, Box const& box) noexcept {
  cairo_rectangle(cairo, box.left, box.top, box.width(), box.height());
}

/// The line of the gradient goes through the middle, and is as long as the box is in its direction.
void paintLinear(cairo_t* cairo, double degree, std::vector<GradientStop> const& stops,
                 Box const& box) {
  double const angle = std::isfinite(degree) ? degree * std::numbers::pi / 180 : 0;
  double const x = std::cos(angle);
  double const y = std::sin(angle);
  double const half = (std::abs(x) * box.width() + std::abs(y) * box.height()) / 2;
  double const middleX = (box.left + box.right) / 2;
  double const middleY = (box.top + box.bottom) / 2;
  PatternPtr const pattern(cairo_pattern_create_linear(middleX - x * half, middleY - y * half,
                                                       middleX + x * half, middleY + y * half));
  for (GradientStop const& stop : stops) {
    constexpr double most = 255;
    cairo_pattern_add_color_stop_rgba(pattern.get(), stop.position, stop.colour.red / most,
                                      stop.colour.green / most, stop.colour.blue / most,
                                      stop.colour.alpha / most);
  }
  cairo_set_source(cairo, pattern.get());
  addBox(cairo, box);
  cairo_fill(cairo);
}

/// Boxes one in the other, from the cell's edges to the inner rectangle, in small steps.
void paintPath(cairo_t* cairo, DOM::GradientFill const& gradient,
               std::vector<GradientStop> const& stops, Box const& box) {
  constexpr double mostSteps = 64;
  double const left = toShare(gradient.left);
  double const top = toShare(gradient.top);
  double const right = std::max(left, toShare(gradient.right));
  double const bottom = std::max(top, toShare(gradient.bottom));
  double const steps = std::clamp(std::max(box.width(), box.height()), 1.0, mostSteps);
  auto const count = static_cast<int>(steps);
  for (int step = count; step >= 0; --step) {
    double const share = static_cast<double>(step) / count;
    setColour(cairo, findColour(stops, share));
    addBox(cairo,
           {box.left + box.width() * left * (1 - share), box.top + box.height() * top * (1 - share),
            box.right - box.width() * (1 - right) * (1 - share),
            box.bottom - box.height() * (1 - bottom) * (1 - share)});
    cairo_fill(cairo);
  }
}

}  // namespace

void paintGradient(cairo_t* cairo, DOM::GradientFill const& gradient, Box const& box) {
  auto const stops = orderStops(gradient);
  if (stops.empty() || box.isEmpty()) {
    return;
  }
  if (gradient.type == DOM::GradientType::Linear) {
    paintLinear(cairo, gradient.degree, stops, box);
  } else {
    paintPath(cairo, gradient, stops, box);
  }
}

}  // namespace Zorv::Render::Draw
