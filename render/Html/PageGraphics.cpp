#include "render/Html/PageGraphics.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <fmt/format.h>
#include <boost/algorithm/string/replace.hpp>

#include "render/Html/Markup.h"
#include "render/Icons.h"

namespace Zorv::Render {

namespace {

/// The colour at the end of a bar: most of the way to white.
DOM::Colour fade(DOM::Colour const& colour) noexcept {
  constexpr int parts = 10;
  constexpr int whiteParts = 8;
  auto const mix = [](std::uint8_t part) {
    return static_cast<std::uint8_t>((part * (parts - whiteParts) + 255 * whiteParts) / parts);
  };
  return {mix(colour.red), mix(colour.green), mix(colour.blue), colour.alpha};
}

/// The part of a gradient between an edge of the unit square and the inner rectangle.
struct GradientPart {
  std::string line;  ///< from the rectangle to the edge, as attributes
  std::string corners;
};

std::string describeStops(DOM::GradientFill const& gradient) {
  std::string text;
  for (auto const& stop : gradient.stops) {
    text += fmt::format("<stop offset=\"{}\" stop-color=\"{}\"/>",
                        std::clamp(stop.position, 0.0, 1.0), toCss(stop.colour));
  }
  return text;
}

}  // namespace

std::string const& PageGraphics::addIcon(Visuals::Icon const& icon) {
  static std::string const none;
  auto const outlines = outlineIcon(icon);
  if (outlines.empty()) {
    return none;
  }
  std::string definition = fmt::format("<symbol id=\"&\" viewBox=\"0 0 {0} {0}\">", iconBox);
  for (auto const& outline : outlines) {
    definition += fmt::format("<path d=\"{}\" fill=\"{}\"/>", outline.path, toCss(outline.colour));
  }
  return add(definition + "</symbol>");
}

std::string const& PageGraphics::addBarGradient(DOM::Colour const& colour, bool isReversed) {
  return add(fmt::format(
      "<linearGradient id=\"&\"{}><stop stop-color=\"{}\"/><stop offset=\"1\" stop-color=\"{}\"/>"
      "</linearGradient>",
      isReversed ? " x1=\"1\" x2=\"0\"" : "", toCss(colour), toCss(fade(colour))));
}

std::string const& PageGraphics::addPathGradient(DOM::GradientFill const& gradient) {
  auto const inside = [](double place) { return std::clamp(place, 0.0, 1.0); };
  double const left = inside(gradient.left);
  double const right = std::max(left, inside(gradient.right));
  double const top = inside(gradient.top);
  double const bottom = std::max(top, inside(gradient.bottom));
  std::array<GradientPart, 4> const parts = {
      {{fmt::format("x1=\"{}\" x2=\"0\" y1=\"0\" y2=\"0\"", left),
        fmt::format("0,0 {0},{1} {0},{2} 0,1", left, top, bottom)},
       {fmt::format("x1=\"{}\" x2=\"1\" y1=\"0\" y2=\"0\"", right),
        fmt::format("1,0 {0},{1} {0},{2} 1,1", right, top, bottom)},
       {fmt::format("x1=\"0\" x2=\"0\" y1=\"{}\" y2=\"0\"", top),
        fmt::format("0,0 {0},{2} {1},{2} 1,0", left, right, top)},
       {fmt::format("x1=\"0\" x2=\"0\" y1=\"{}\" y2=\"1\"", bottom),
        fmt::format("0,1 {0},{2} {1},{2} 1,1", left, right, bottom)}}};
  std::string definition = "<symbol id=\"&\" viewBox=\"0 0 1 1\" preserveAspectRatio=\"none\">";
  auto const stops = describeStops(gradient);
  if (!gradient.stops.empty()) {
    definition += fmt::format("<rect width=\"1\" height=\"1\" fill=\"{}\"/>",
                              toCss(gradient.stops.front().colour));
  }
  std::size_t number = 0;
  for (auto const& part : parts) {
    definition += fmt::format(
        "<linearGradient id=\"&-{0}\" gradientUnits=\"userSpaceOnUse\" {1}>{2}</linearGradient>"
        "<polygon points=\"{3}\" fill=\"url(#&-{0})\"/>",
        number++, part.line, stops, part.corners);
  }
  return add(definition + "</symbol>");
}

std::string const& PageGraphics::add(std::string const& definition) {
  auto const [entry, isNew] = _ids.try_emplace(definition);
  if (isNew) {
    entry->second = fmt::format("g{}", _ids.size());
    _definitions += boost::replace_all_copy(definition, "&", entry->second);
  }
  return entry->second;
}

std::string PageGraphics::getMarkup() const {
  return _definitions.empty()
             ? std::string()
             : fmt::format("<svg class=\"defs\" aria-hidden=\"true\">{}</svg>\n", _definitions);
}

}  // namespace Zorv::Render
