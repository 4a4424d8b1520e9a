#include "Formulas/Evaluation/Texts.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace Zorv::Formulas {

namespace {

/// The length of the first character of a text that is not empty, in bytes, and the character; a
/// byte that begins none stands for itself, out of the range of characters.
struct Character {
  std::int32_t code;
  std::size_t length;
};

constexpr std::int32_t strayByte = 0x110000;

Character readCharacter(std::string_view text) noexcept {
  auto const first = static_cast<unsigned char>(text.front());
  if (first < 0x80) {
    return {first, 1};
  }
  std::size_t at = 0;
  UChar32 code = 0;
  U8_NEXT(text.data(), at, text.size(), code);
  return code < 0 ? Character{strayByte + first, 1} : Character{code, at};
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
  return character.code < 0x80 || character.code >= strayByte
             ? foldAscii(character.code)
             : u_foldCase(character.code, U_FOLD_CASE_DEFAULT);
}

std::strong_ordering compareTexts(std::string_view a, std::string_view b) noexcept {
  while (!a.empty() && !b.empty()) {
    auto const order = takeFolded(a) <=> takeFolded(b);
    if (order != 0) {
      return order;
    }
  }
  return b.empty() <=> a.empty();
}

}  // namespace Zorv::Formulas
