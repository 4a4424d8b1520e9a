#include "render/Html/FillCss.h"

#include <string_view>

#include <fmt/format.h>

#include "render/Html/Markup.h"

namespace Zorv::Render {

namespace {

/// Squares of `side` pixels, two in each tile, shifted by half a tile against each other.
std::string describeSquares(std::string_view colour, int side, int across, int down) {
  // The quarter to the upper left of a point is the square.
  auto const square =
      fmt::format("conic-gradient(from 270deg at {0}px {0}px,{1} 90deg,#0000 0)", side, colour);
  return fmt::format("{0} 0 0/{1}px {2}px,{0} {3}px {4}px/{1}px {2}px", square, across, down,
                     across / 2, down / 2);
}

/// Lines of some width that stand `period` pixels from each other.
std::string describeLines(std::string_view angle, std::string_view colour, int width, int period) {
  return fmt::format("repeating-linear-gradient({0},{1} 0 {2}px,#0000 {2}px {3}px)", angle, colour,
                     width, period);
}

/// The image of a pattern without what lies behind it.
std::string describePattern(DOM::FillPattern pattern, std::string_view colour) {
  using DOM::FillPattern;
  constexpr int light = 1;
  constexpr int dark = 2;
  constexpr int period = 4;
  auto const lines = [&](std::string_view angle, int width) {
    return describeLines(angle, colour, width, period);
  };
  switch (pattern) {
    case FillPattern::DarkGray:
      return describeSquares(colour, light, 2, 2) + "," + lines("0deg", light);
    case FillPattern::MediumGray:
      return describeSquares(colour, light, 2, 2);
    case FillPattern::LightGray:
      return describeSquares(colour, light, 4, 2);
    case FillPattern::Gray125:
      return describeSquares(colour, light, 4, 4);
    case FillPattern::Gray0625:
      return describeSquares(colour, light, 8, 4);
    case FillPattern::DarkHorizontal:
      return lines("0deg", dark);
    case FillPattern::LightHorizontal:
      return lines("0deg", light);
    case FillPattern::DarkVertical:
      return lines("90deg", dark);
    case FillPattern::LightVertical:
      return lines("90deg", light);
    case FillPattern::DarkDown:
      return lines("45deg", dark);
    case FillPattern::LightDown:
      return lines("45deg", light);
    case FillPattern::DarkUp:
      return lines("135deg", dark);
    case FillPattern::LightUp:
      return lines("135deg", light);
    case FillPattern::DarkGrid:
      return describeSquares(colour, dark, period, period);
    case FillPattern::LightGrid:
      return lines("0deg", light) + "," + lines("90deg", light);
    case FillPattern::DarkTrellis:
      return lines("45deg", dark) + "," + lines("135deg", dark);
    case FillPattern::LightTrellis:
      return lines("45deg", light) + "," + lines("135deg", light);
    case FillPattern::None:
    case FillPattern::Solid:
    case FillPattern::Gradient:
      break;
  }
  return {};
}

/// CSS counts the angles of gradients from upwards on, workbooks from rightwards on.
std::string describeLinear(DOM::GradientFill const& gradient) {
  constexpr double quarterTurn = 90;
  std::string text = "linear-gradient(";
  appendNumber(text, gradient.degree + quarterTurn);
  text += "deg";
  for (auto const& stop : gradient.stops) {
    text += "," + toCss(stop.colour) + " ";
    constexpr double percent = 100;
    appendNumber(text, stop.position * percent);
    text += "%";
  }
  return text + ")";
}

}  // namespace

bool isPathGradient(CellFill const& fill) noexcept {
  return fill.pattern == DOM::FillPattern::Gradient && fill.gradient &&
         fill.gradient->type == DOM::GradientType::Path;
}

std::string describeFill(CellFill const& fill) {
  if (fill.pattern == DOM::FillPattern::None || isPathGradient(fill)) {
    return {};
  }
  if (fill.pattern == DOM::FillPattern::Gradient) {
    // A gradient of one stop is a colour, and one without stops is none.
    auto const stops = fill.gradient ? fill.gradient->stops.size() : 0;
    return stops == 0   ? std::string()
           : stops == 1 ? "background:" + toCss(fill.gradient->stops[0].colour)
                        : "background:" + describeLinear(*fill.gradient);
  }
  auto const pattern = describePattern(fill.pattern, toCss(fill.patternColour));
  return fmt::format("background:{}{}{}", pattern, pattern.empty() ? "" : ",", toCss(fill.colour));
}

}  // namespace Zorv::Render
