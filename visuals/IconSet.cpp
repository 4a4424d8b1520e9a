#include "visuals/IconSet.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Zorv::Visuals {

namespace {

constexpr std::array<std::string_view, 21> iconSetNames{
    "3Arrows",        "3ArrowsGray", "3Flags",      "3TrafficLights1", "3TrafficLights2", "3Signs",
    "3Symbols",       "3Symbols2",   "4Arrows",     "4ArrowsGray",     "4RedToBlack",     "4Rating",
    "4TrafficLights", "5Arrows",     "5ArrowsGray", "5Rating",         "5Quarters",       "3Stars",
    "3Triangles",     "5Boxes",      "NoIcons"};

}  // namespace

std::string_view toText(IconSetName name) noexcept {
  return iconSetNames.at(static_cast<std::size_t>(name));
}

std::optional<IconSetName> parseIconSetName(std::string_view text) noexcept {
  auto const* const found = std::ranges::find(iconSetNames, text);
  return found == iconSetNames.end()
             ? std::nullopt
             : std::optional(static_cast<IconSetName>(found - iconSetNames.begin()));
}

/// The names begin with it.
unsigned countIcons(IconSetName name) noexcept {
  return name == IconSetName::NoIcons ? 0 : static_cast<unsigned>(toText(name).front() - '0');
}

}  // namespace Zorv::Visuals
