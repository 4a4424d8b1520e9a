#pragma once

#include <string_view>

#include "Utils/CaseFolding.h"

/// Classes of characters in a formula's text, which is UTF-8.
namespace Zorv::Formulas {

/// A byte of a character outside ASCII. Names may contain all of those characters.
[[nodiscard]] constexpr bool isBeyondAscii(char c) noexcept {
  return static_cast<unsigned char>(c) >= 0x80;
}

[[nodiscard]] constexpr bool isSpace(char c) noexcept {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// A text without the spaces before and behind it.
[[nodiscard]] constexpr std::string_view trimSpaces(std::string_view text) noexcept {
  while (!text.empty() && isSpace(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isSpace(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

/// The first character of a name, a reference or a function's name.
[[nodiscard]] constexpr bool isIdentifierStart(char c) noexcept {
  return isAsciiLetter(c) || c == '_' || c == '\\' || c == '$' || isBeyondAscii(c);
}

[[nodiscard]] constexpr bool isIdentifierPart(char c) noexcept {
  return isIdentifierStart(c) || isAsciiDigit(c) || c == '.' || c == '?';
}

}  // namespace Zorv::Formulas
