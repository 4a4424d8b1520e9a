#include "Formulas/Text/Texts.h"

#include <algorithm>

#include "Utils/CaseFolding.h"

namespace Zorv::Formulas {

namespace {

/// A character and its length in bytes. A stray byte is a character of its own, beyond the range of
/// code points.
struct Character {
  std::int32_t code;
  std::size_t length;
};

constexpr std::int32_t strayByte = 0x110000;

/// The length of a character in bytes, by its first one; 1 for a stray byte.
constexpr std::size_t lengthFromFirst(unsigned char first) noexcept {
  return first < 0xC2 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : first < 0xF5 ? 4 : 1;
}

Character readCharacter(std::string_view text) noexcept {
  auto const first = static_cast<unsigned char>(text.front());
  if (first < 0x80) {
    return {first, 1};
  }
  std::size_t const length = lengthFromFirst(first);
  if (length == 1 || length > text.size()) {
    return {strayByte + first, 1};
  }
  std::int32_t code = first & (0x7F >> length);
  for (std::size_t i = 1; i < length; ++i) {
    auto const next = static_cast<unsigned char>(text[i]);
    if ((next & 0xC0) != 0x80) {
      return {strayByte + first, 1};
    }
    code = (code << 6) | (next & 0x3F);
  }
  return {code, length};
}

constexpr std::int32_t foldAscii(std::int32_t code) noexcept {
  return 'A' <= code && code <= 'Z' ? code - 'A' + 'a' : code;
}

}  // namespace

std::size_t countCharacters(std::string_view text) noexcept {
  std::size_t count = 0;
  for (; !text.empty(); ++count) {
    text.remove_prefix(readCharacter(text).length);
  }
  return count;
}

std::size_t bytesOfCharacters(std::string_view text, std::size_t count) noexcept {
  std::string_view rest = text;
  for (; count != 0 && !rest.empty(); --count) {
    rest.remove_prefix(readCharacter(rest).length);
  }
  return text.size() - rest.size();
}

std::int32_t takeFolded(std::string_view& text) noexcept {
  Character const character = readCharacter(text);
  text.remove_prefix(character.length);
  return character.code < 0x80 || character.code >= strayByte ? foldAscii(character.code)
                                                              : foldCodePoint(character.code);
}

std::strong_ordering compareTexts(std::string_view a, std::string_view b) noexcept {
  // Most texts begin with ASCII, and most comparisons end there.
  std::size_t same = 0;
  std::size_t const shorter = std::min(a.size(), b.size());
  for (; same < shorter; ++same) {
    auto const codeA = static_cast<unsigned char>(a[same]);
    auto const codeB = static_cast<unsigned char>(b[same]);
    if (codeA >= 0x80 || codeB >= 0x80) {
      break;
    }
    auto const order = foldAscii(codeA) <=> foldAscii(codeB);
    if (order != 0) {
      return order;
    }
  }
  a.remove_prefix(same);
  b.remove_prefix(same);
  while (!a.empty() && !b.empty()) {
    auto const order = takeFolded(a) <=> takeFolded(b);
    if (order != 0) {
      return order;
    }
  }
  return a.size() <=> b.size();  // at least one is at its end
}

}  // namespace Zorv::Formulas
