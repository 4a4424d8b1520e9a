#include "render/Terminal/Escapes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include <fmt/format.h>

namespace Zorv::Render {

namespace {

constexpr std::array<int, 6> cubeLevels = {0, 95, 135, 175, 215, 255};

std::size_t findCubeLevel(int value) noexcept {
  std::size_t nearest = 0;
  for (std::size_t level = 1; level < cubeLevels.size(); ++level) {
    if (std::abs(cubeLevels[level] - value) < std::abs(cubeLevels[nearest] - value)) {
      nearest = level;
    }
  }
  return nearest;
}

int measureDistance(DOM::Colour const& colour, int red, int green, int blue) noexcept {
  int const r = colour.red - red;
  int const g = colour.green - green;
  int const b = colour.blue - blue;
  return r * r + g * g + b * b;
}

void appendColour(std::string& text, int plane, DOM::Colour const& colour, ColourDepth depth) {
  auto const out = std::back_inserter(text);
  if (depth == ColourDepth::Direct) {
    fmt::format_to(out, ";{};2;{};{};{}", plane, colour.red, colour.green, colour.blue);
  } else {
    fmt::format_to(out, ";{};5;{}", plane, toIndexedColour(colour));
  }
}

}  // namespace

std::uint8_t toIndexedColour(DOM::Colour const& colour) noexcept {
  constexpr std::size_t firstOfCube = 16;
  constexpr std::size_t firstGrey = 232;
  constexpr int greyCount = 24;
  auto const red = findCubeLevel(colour.red);
  auto const green = findCubeLevel(colour.green);
  auto const blue = findCubeLevel(colour.blue);
  int const mean = (colour.red + colour.green + colour.blue) / 3;
  int const grey = std::clamp((mean - 3) / 10, 0, greyCount - 1);
  int const greyLevel = 8 + 10 * grey;
  bool const isNearerToGrey =
      measureDistance(colour, greyLevel, greyLevel, greyLevel) <
      measureDistance(colour, cubeLevels[red], cubeLevels[green], cubeLevels[blue]);
  return static_cast<std::uint8_t>(isNearerToGrey ? firstGrey + static_cast<std::size_t>(grey)
                                                  : firstOfCube + 36 * red + 6 * green + blue);
}

void appendStyle(std::string& text, CharacterStyle const& style, ColourDepth depth) {
  if (depth == ColourDepth::None) {
    return;
  }
  text += "\x1B[0";
  text += style.bold ? ";1" : "";
  text += style.italic ? ";3" : "";
  if (style.underline != DOM::Underline::None) {
    bool const isDouble = style.underline == DOM::Underline::Double ||
                          style.underline == DOM::Underline::DoubleAccounting;
    text += isDouble ? ";21" : ";4";
  }
  text += style.strikethrough ? ";9" : "";
  constexpr int inkPlane = 38;
  constexpr int groundPlane = 48;
  if (style.ink) {
    appendColour(text, inkPlane, *style.ink, depth);
  }
  if (style.ground) {
    appendColour(text, groundPlane, *style.ground, depth);
  }
  text += 'm';
}

}  // namespace Zorv::Render
