#include "render/Terminal/IconGlyphs.h"

#include <cstddef>
#include <string_view>

namespace Zorv::Render {

namespace {

using Visuals::IconSetName;

// Dark enough to be read on white.
constexpr DOM::Colour redIcon{0xC6, 0x28, 0x28};
constexpr DOM::Colour yellowIcon{0xB2, 0x7D, 0x00};
constexpr DOM::Colour greenIcon{0x2E, 0x7D, 0x32};
constexpr DOM::Colour greyIcon{0x60, 0x60, 0x60};
constexpr DOM::Colour blackIcon{0x26, 0x26, 0x26};
constexpr DOM::Colour pinkIcon{0xD8, 0x6C, 0x6C};
constexpr DOM::Colour blueIcon{0x2B, 0x5F, 0xA8};

/// The characters of a set, and their colours: one letter each.
struct IconSetGlyphs {
  std::u32string_view characters;
  std::string_view colours;
};

IconSetGlyphs findSet(IconSetName set) noexcept {
  switch (set) {
    case IconSetName::Arrows3:
      return {U"↓→↑", "ryg"};
    case IconSetName::ArrowsGray3:
      return {U"↓→↑", "..."};
    case IconSetName::Flags3:
      return {U"⚐⛿⚑", "ryg"};
    case IconSetName::TrafficLights3One:
      return {U"○◐●", "ryg"};
    case IconSetName::TrafficLights3Two:
      return {U"□◧■", "ryg"};
    case IconSetName::Signs3:
      return {U"◆▲●", "ryg"};
    case IconSetName::Symbols3:
    case IconSetName::Symbols3Two:
      return {U"✗!✓", "ryg"};
    case IconSetName::Arrows4:
      return {U"↓↘↗↑", "ryyg"};
    case IconSetName::ArrowsGray4:
      return {U"↓↘↗↑", "...."};
    case IconSetName::RedToBlack4:
      return {U"○◔◑●", "b.pr"};
    case IconSetName::Rating4:
      return {U"▂▄▆█", "uuuu"};
    case IconSetName::TrafficLights4:
      return {U"○◔◑●", "bryg"};
    case IconSetName::Arrows5:
      return {U"↓↘→↗↑", "ryyyg"};
    case IconSetName::ArrowsGray5:
      return {U"↓↘→↗↑", "....."};
    case IconSetName::Rating5:
      return {U"▁▂▄▆█", "uuuuu"};
    case IconSetName::Quarters5:
      return {U"○◔◑◕●", "....."};
    case IconSetName::Stars3:
      return {U"☆✬★", "yyy"};
    case IconSetName::Triangles3:
      return {U"▼▬▲", "ryg"};
    case IconSetName::Boxes5:
      return {U"□▖▞▟█", "uuuuu"};
    case IconSetName::NoIcons:
      break;
  }
  return {};
}

DOM::Colour toIconColour(char letter) noexcept {
  switch (letter) {
    case 'r':
      return redIcon;
    case 'y':
      return yellowIcon;
    case 'g':
      return greenIcon;
    case 'b':
      return blackIcon;
    case 'p':
      return pinkIcon;
    case 'u':
      return blueIcon;
    default:
      return greyIcon;
  }
}

}  // namespace

IconGlyph findIconGlyph(Visuals::Icon const& icon) noexcept {
  auto const set = findSet(icon.set);
  return {set.characters[icon.index], toIconColour(set.colours[icon.index])};
}

}  // namespace Zorv::Render
