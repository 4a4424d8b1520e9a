#include "workbook/Read/Colours.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

#include <fmt/format.h>

#include "workbook/Quote.h"
#include "workbook/Read/Values.h"

namespace Zorv::Workbook {

namespace {

constexpr DOM::Colour colourOf(std::uint32_t rgb) noexcept {
  return {static_cast<std::uint8_t>(rgb >> 16U), static_cast<std::uint8_t>(rgb >> 8U & 0xFFU),
          static_cast<std::uint8_t>(rgb & 0xFFU), 255};
}

constexpr DOM::Colour ink = colourOf(0x000000);
constexpr DOM::Colour paper = colourOf(0xFFFFFF);

/// The first eight indexed colours, which the palette has twice.
constexpr std::array<std::uint32_t, 8> basicColours{0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00,
                                                    0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF};
constexpr std::array<std::uint32_t, 48> furtherColours{
    0x800000, 0x008000, 0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080,
    0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF, 0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF,
    0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000, 0x008080, 0x0000FF,
    0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696,
    0x003366, 0x339966, 0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333};

constexpr ThemeColours defaultTheme{colourOf(0xFFFFFF), colourOf(0x000000), colourOf(0xEEECE1),
                                    colourOf(0x1F497D), colourOf(0x4F81BD), colourOf(0xC0504D),
                                    colourOf(0x9BBB59), colourOf(0x8064A2), colourOf(0x4BACC6),
                                    colourOf(0xF79646), colourOf(0x0000FF), colourOf(0x800080)};

/// By their index, which is not the order in theme parts: light and dark are swapped.
constexpr std::array<char const*, 12> themeNames{
    "a:lt1",     "a:dk1",     "a:lt2",     "a:dk2",     "a:accent1", "a:accent2",
    "a:accent3", "a:accent4", "a:accent5", "a:accent6", "a:hlink",   "a:folHlink"};

/// Lightens a colour, or darkens it where the tint is negative, by its lightness in the
/// hue-lightness-saturation space (ISO/IEC 29500-1, 18.8.19). Changing the lightness alone moves
/// every component along a line towards white or black, its distance from grey scaled with the
/// range of colours left.
DOM::Colour applyTint(DOM::Colour colour, double tint) noexcept {
  std::array<double, 3> components{colour.red / 255.0, colour.green / 255.0, colour.blue / 255.0};
  auto const [lowest, highest] = std::minmax({components[0], components[1], components[2]});
  double const lightness = (lowest + highest) / 2;
  double const clamped = std::clamp(tint, -1.0, 1.0);
  double const target =
      clamped < 0 ? lightness * (1 + clamped) : lightness * (1 - clamped) + clamped;
  double const room = 1 - std::abs(2 * lightness - 1);
  double const scale = room > 0 ? (1 - std::abs(2 * target - 1)) / room : 0;
  auto const shifted = [&](double component) {
    double const value = target + (component - lightness) * scale;
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 1.0) * 255));
  };
  return {shifted(components[0]), shifted(components[1]), shifted(components[2]), 255};
}

}  // namespace

ThemeColours const& getDefaultThemeColours() noexcept { return defaultTheme; }

ThemeColours readThemeColours(pugi::xml_node theme) {
  ThemeColours colours = defaultTheme;
  pugi::xml_node const scheme = theme.child("a:themeElements").child("a:clrScheme");
  for (std::size_t index = 0; index < colours.size(); ++index) {
    pugi::xml_node const named = scheme.child(themeNames.at(index));
    pugi::xml_node const system = named.child("a:sysClr");
    auto const colour = parseColour(system ? system.attribute("lastClr").value()
                                           : named.child("a:srgbClr").attribute("val").value());
    colours.at(index) = colour.value_or(colours.at(index));
  }
  return colours;
}

Palette::Palette(ThemeColours const& theme) : _theme(theme) {
  for (auto const* colours : {&basicColours, &basicColours}) {
    std::transform(colours->begin(), colours->end(), std::back_inserter(_indexed), colourOf);
  }
  std::transform(furtherColours.begin(), furtherColours.end(), std::back_inserter(_indexed),
                 colourOf);
}

void Palette::setIndexed(std::vector<DOM::Colour> const& colours) {
  std::copy_n(colours.begin(), std::min(colours.size(), _indexed.size()), _indexed.begin());
}

DOM::Colour Palette::mixTheme(std::size_t index, double tint) const {
  return applyTint(_theme.at(index), tint);
}

std::optional<DOM::Colour> Palette::read(pugi::xml_node element, AutomaticColour automatic) {
  auto const colour = readPlain(element, automatic);
  pugi::xml_attribute const tintAttribute = element.attribute("tint");
  auto const tint = parseNumber(tintAttribute.value());
  if (tintAttribute && !tint) {
    noteUnknown(tintAttribute);
  }
  return colour && tint ? applyTint(*colour, *tint) : colour;
}

/// The colour before its tint. A theme's colour goes before components, and these before an index.
std::optional<DOM::Colour> Palette::readPlain(pugi::xml_node element, AutomaticColour automatic) {
  if (parseBoolean(element.attribute("auto").value()).value_or(false)) {
    return automatic == AutomaticColour::Ink ? ink : paper;
  }
  if (pugi::xml_attribute const theme = element.attribute("theme")) {
    return findTheme(theme);
  }
  pugi::xml_attribute const components = element.attribute("rgb");
  if (auto const rgb = parseColour(components.value())) {
    return rgb;
  }
  if (pugi::xml_attribute const index = element.attribute("indexed")) {
    return findIndexed(index, automatic);
  }
  if (components) {
    noteUnknown(components);
  }
  return std::nullopt;
}

std::optional<DOM::Colour> Palette::findTheme(pugi::xml_attribute index) {
  auto const number = parseInteger(index.value());
  if (!number || *number < 0 || static_cast<std::size_t>(*number) >= _theme.size()) {
    noteUnknown(index);
    return std::nullopt;
  }
  return _theme.at(static_cast<std::size_t>(*number));
}

/// The two indices after the palette are the system's colours of text and of windows.
std::optional<DOM::Colour> Palette::findIndexed(pugi::xml_attribute index,
                                                AutomaticColour automatic) {
  auto const number = parseInteger(index.value());
  if (number && *number >= 0 && static_cast<std::size_t>(*number) < _indexed.size()) {
    return _indexed.at(static_cast<std::size_t>(*number));
  }
  if (!number || *number < 0) {
    noteUnknown(index);
    return std::nullopt;
  }
  return automatic == AutomaticColour::Ink ? ink : paper;
}

void Palette::noteUnknown(pugi::xml_attribute attribute) {
  if (++_unknownCount == 1) {
    _firstUnknown = fmt::format("{}=\"{}\"", attribute.name(), quote(attribute.value()));
  }
}

std::optional<DOM::Colour> parseColour(std::string_view text) noexcept {
  constexpr std::size_t componentDigits = 6;
  if (text.size() == componentDigits + 2) {
    text.remove_prefix(2);
  }
  std::uint32_t rgb = 0;
  auto const result = std::from_chars(text.data(), text.data() + text.size(), rgb, 16);
  bool const valid = text.size() == componentDigits && result.ec == std::errc() &&
                     result.ptr == text.data() + text.size();
  return valid ? std::optional(colourOf(rgb)) : std::nullopt;
}

}  // namespace Zorv::Workbook
