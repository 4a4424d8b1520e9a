#include "render/Html/Markup.h"

#include <algorithm>
#include <array>
#include <cmath>

#include <fmt/format.h>

namespace Zorv::Render {

namespace {

constexpr bool isControl(char character) noexcept {
  auto const byte = static_cast<unsigned char>(character);
  return (byte < 0x20 && character != '\n' && character != '\t') || byte == 0x7F;
}

/// Browsers drop some of these from addresses.
constexpr bool isBelowSpace(char character) noexcept {
  return static_cast<unsigned char>(character) < 0x20;
}

constexpr char toLowerAscii(char character) noexcept {
  return 'A' <= character && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                              : character;
}

/// True if an address begins with a lower-case scheme, in any letter case.
bool hasScheme(std::string_view address, std::string_view scheme) noexcept {
  return address.size() > scheme.size() &&
         std::equal(scheme.begin(), scheme.end(), address.begin(),
                    [](char a, char b) { return a == toLowerAscii(b); });
}

}  // namespace

void appendText(std::string& out, std::string_view text) {
  for (char const character : text) {
    switch (character) {
      case '&':
        out += "&amp;";
        break;
      case '<':
        out += "&lt;";
        break;
      case '>':
        out += "&gt;";
        break;
      case '"':
        out += "&quot;";
        break;
      case '\'':
        out += "&#39;";
        break;
      default:
        out += isControl(character) ? ' ' : character;
    }
  }
}

void appendJson(std::string& out, std::string_view text) {
  out += '"';
  for (char const character : text) {
    switch (character) {
      case '"':
      case '\\':
        out += '\\';
        out += character;
        break;
      case '\n':
        out += "\\n";
        break;
      case '<':
      case '>':
      case '&':
        // No tag and no comment can begin or end in it.
        out += fmt::format("\\u{:04x}", static_cast<unsigned>(character));
        break;
      default:
        out += static_cast<unsigned char>(character) < 0x20 ? ' ' : character;
    }
  }
  out += '"';
}

void appendNumber(std::string& out, double number) {
  constexpr double largest = 1e7;
  constexpr double steps = 100;
  // A NaN becomes 0.
  double const bounded = number > -largest ? std::min(number, largest) : number < 0 ? -largest : 0;
  double const rounded = std::round(bounded * steps) / steps;
  fmt::format_to(std::back_inserter(out), "{}", rounded == 0 ? 0 : rounded);
}

void appendColour(std::string& out, DOM::Colour const& colour) {
  auto const inserter = std::back_inserter(out);
  fmt::format_to(inserter, "#{:02x}{:02x}{:02x}", colour.red, colour.green, colour.blue);
  if (colour.alpha != 255) {
    fmt::format_to(inserter, "{:02x}", colour.alpha);
  }
}

std::string toPixels(double length) {
  std::string text;
  appendNumber(text, length);
  return text + (text == "0" ? "" : "px");
}

std::string toCss(DOM::Colour const& colour) {
  std::string text;
  appendColour(text, colour);
  return text;
}

std::string_view findSafeAddress(std::string_view address) noexcept {
  constexpr std::array<std::string_view, 4> schemes = {"http://", "https://", "ftp://", "mailto:"};
  constexpr std::size_t longest = 4'096;
  bool const isSafe =
      address.size() <= longest && std::ranges::none_of(address, isBelowSpace) &&
      std::ranges::any_of(schemes, [&](std::string_view s) { return hasScheme(address, s); });
  return isSafe ? address : std::string_view();
}

}  // namespace Zorv::Render
