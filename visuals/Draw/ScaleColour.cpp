#include "visuals/Draw/ScaleColour.h"

#include <cstddef>
#include <cstdint>

#include "visuals/Draw/ShareOf.h"

namespace Zorv::Visuals {

namespace {

std::uint8_t mixComponents(std::uint8_t from, std::uint8_t to, double share) noexcept {
  constexpr double half = 0.5;  // the result is not negative, so that cutting it off rounds
  return static_cast<std::uint8_t>(from + share * (to - from) + half);
}

DOM::Colour mixColours(DOM::Colour const& from, DOM::Colour const& to, double share) noexcept {
  return {mixComponents(from.red, to.red, share), mixComponents(from.green, to.green, share),
          mixComponents(from.blue, to.blue, share), mixComponents(from.alpha, to.alpha, share)};
}

}  // namespace

DOM::Colour findScaleColour(ColourScale const& scale, std::span<double const> bounds,
                            double value) noexcept {
  auto const& points = scale.points;
  std::size_t next = 1;
  while (next + 1 < points.size() && value > bounds[next]) {
    ++next;
  }
  return mixColours(points[next - 1].colour, points[next].colour,
                    shareOf(value, bounds[next - 1], bounds[next]));
}

}  // namespace Zorv::Visuals
