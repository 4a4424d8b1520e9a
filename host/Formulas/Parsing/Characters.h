#pragma once

#include <string>
#include <string_view>

/// Classes of characters in a formula's text, which is UTF-8.
namespace Zorv::Formulas {

[[nodiscard]] constexpr bool isDigit(char c) noexcept { return '0' <= c && c <= '9'; }

[[nodiscard]] constexpr char toUpperAscii(char c) noexcept {
  return 'a' <= c && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

[[nodiscard]] constexpr bool isLetter(char c) noexcept {
  char const upper = toUpperAscii(c);
  return 'A' <= upper && upper <= 'Z';
}

/// A part of a character outside ASCII; all of those may stand in names.
[[nodiscard]] constexpr bool isBeyondAscii(char c) noexcept {
  return static_cast<unsigned char>(c) >= 0x80;
}

[[nodiscard]] constexpr bool isSpace(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// What a name, a reference or a function's name begins with.
[[nodiscard]] constexpr bool isIdentifierStart(char c) noexcept {
  return isLetter(c) || c == '_' || c == '\\' || c == '$' || isBeyondAscii(c);
}

[[nodiscard]] constexpr bool isIdentifierPart(char c) noexcept {
  return isIdentifierStart(c) || isDigit(c) || c == '.' || c == '?';
}

[[nodiscard]] inline std::string toUpperAscii(std::string_view text) {
  std::string upper(text);
  for (char& c : upper) {
    c = toUpperAscii(c);
  }
  return upper;
}

}  // namespace Zorv::Formulas
