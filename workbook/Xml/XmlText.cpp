#include "workbook/Xml/XmlText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

#include <unicode/utf16.h>
#include <unicode/utf8.h>

namespace Zorv::Workbook {

namespace {

struct NamedEntity {
  std::string_view name;
  char character;
};
constexpr std::array namedEntities{NamedEntity{"lt", '<'}, NamedEntity{"gt", '>'},
                                   NamedEntity{"amp", '&'}, NamedEntity{"quot", '"'},
                                   NamedEntity{"apos", '\''}};

/// Character of a reference such as `#10` or `#xA`; 0 if there is none.
UChar32 parseCharacterNumber(std::string_view reference) noexcept {
  bool const isHexadecimal = reference.starts_with("#x");
  std::string_view const digits = reference.substr(isHexadecimal ? 2 : 1);
  std::uint32_t number = 0;
  auto const result = std::from_chars(digits.data(), digits.data() + digits.size(), number,
                                      isHexadecimal ? 16 : 10);
  constexpr std::uint32_t lastCharacter = 0x10FFFF;
  bool const valid = result.ec == std::errc() && result.ptr == digits.data() + digits.size() &&
                     number <= lastCharacter && !U_IS_SURROGATE(number);
  return valid ? static_cast<UChar32>(number) : 0;
}

/// Writes the replacement of an entity, which is never longer than its name. Returns the new end,
/// or null for an unknown entity.
char* replaceEntity(std::string_view entity, char* out) noexcept {
  if (entity.starts_with('#')) {
    UChar32 const character = parseCharacterNumber(entity);
    if (character == 0) {
      return nullptr;
    }
    int length = 0;
    U8_APPEND_UNSAFE(out, length, character);
    return out + length;
  }
  auto const* const found =
      std::find_if(namedEntities.begin(), namedEntities.end(),
                   [entity](NamedEntity const& known) { return known.name == entity; });
  if (found == namedEntities.end()) {
    return nullptr;
  }
  *out = found->character;
  return out + 1;
}

/// True if a text contains nothing to be replaced.
bool isPlain(char const* begin, char const* end, bool isAttribute) noexcept {
  return std::none_of(begin, end, [isAttribute](char c) {
    return c == '&' || c == '\r' || (isAttribute && (c == '\n' || c == '\t'));
  });
}

/// UTF-16 unit of `_xHHHH_` at the front of a text, or nothing.
std::optional<char16_t> parseEscape(std::string_view text) noexcept {
  constexpr std::size_t escapeSize = 7;
  if (text.size() < escapeSize || !text.starts_with("_x") || text[escapeSize - 1] != '_') {
    return std::nullopt;
  }
  std::uint16_t unit = 0;
  auto const result = std::from_chars(text.data() + 2, text.data() + escapeSize - 1, unit, 16);
  bool const valid = result.ec == std::errc() && result.ptr == text.data() + escapeSize - 1;
  return valid ? std::optional<char16_t>(unit) : std::nullopt;
}

}  // namespace

char const* decodeXmlText(char* begin, char*& end, bool isAttribute) noexcept {
  if (isPlain(begin, end, isAttribute)) {
    return nullptr;
  }
  char* out = begin;
  for (char* at = begin; at != end;) {
    if (*at == '&') {
      char* const semicolon = std::find(at, end, ';');
      if (semicolon == end) {
        return "an ampersand that begins no entity";
      }
      out = replaceEntity({at + 1, static_cast<std::size_t>(semicolon - at - 1)}, out);
      if (!out) {
        return "an entity that XML does not define";
      }
      at = semicolon + 1;
    } else if (*at == '\r') {
      at += at + 1 != end && at[1] == '\n' ? 2 : 1;
      *out++ = isAttribute ? ' ' : '\n';
    } else {
      bool const isSpace = isAttribute && isXmlSpace(*at);
      *out++ = isSpace ? ' ' : *at;
      ++at;
    }
  }
  end = out;
  return nullptr;
}

std::string_view trimXmlSpaces(std::string_view text) noexcept {
  while (!text.empty() && isXmlSpace(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isXmlSpace(text.back())) {
    text.remove_suffix(1);
  }
  return text;
}

std::string unescapeXstring(std::string_view text) {
  std::string result;
  constexpr std::size_t escapeSize = 7;
  for (std::size_t at = 0; at < text.size();) {
    auto const unit = text[at] == '_' ? parseEscape(text.substr(at)) : std::nullopt;
    if (!unit) {
      result += text[at++];
      continue;
    }
    at += escapeSize;
    UChar32 character = *unit;
    auto const trail = U16_IS_LEAD(character) ? parseEscape(text.substr(at)) : std::nullopt;
    if (trail && U16_IS_TRAIL(*trail)) {
      character = U16_GET_SUPPLEMENTARY(character, *trail);
      at += escapeSize;
    }
    constexpr UChar32 replacementCharacter = 0xFFFD;
    character = U_IS_SURROGATE(character) ? replacementCharacter : character;
    std::array<char, U8_MAX_LENGTH> encoded{};
    int length = 0;
    U8_APPEND_UNSAFE(encoded, length, character);
    result.append(encoded.data(), static_cast<std::size_t>(length));
  }
  return result;
}

}  // namespace Zorv::Workbook
