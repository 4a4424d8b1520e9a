#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "Utils/Export.h"

// Letter case of ASCII, and Unicode case folding: folded texts are equal where the texts differ in
// letter case only.
namespace Zorv {

/// True for 0 to 9.
[[nodiscard]] constexpr bool isAsciiDigit(char c) noexcept { return '0' <= c && c <= '9'; }

/// The capital of an ASCII letter; any other byte as it is.
[[nodiscard]] constexpr char toAsciiUpper(char c) noexcept {
  return 'a' <= c && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}
/// The small letter of an ASCII capital; any other byte as it is.
[[nodiscard]] constexpr char toAsciiLower(char c) noexcept {
  return 'A' <= c && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
/// True for A to Z and a to z.
[[nodiscard]] constexpr bool isAsciiLetter(char c) noexcept {
  char const upper = toAsciiUpper(c);
  return 'A' <= upper && upper <= 'Z';
}

/// A copy with the ASCII letters in upper case.
[[nodiscard]] ZORV_HOST_EXPORT std::string toAsciiUpper(std::string_view text);

/// How the letter I folds.
enum class CaseFolding : std::uint8_t {
  Default,
  Turkic,  ///< `I` to a small i without a dot, and I with a dot to `i`
};

/// Full case folding of a UTF-8 text: `ß` becomes `ss`. Malformed bytes become U+FFFD.
[[nodiscard]] ZORV_HOST_EXPORT std::string foldCase(std::string_view text,
                                                    CaseFolding folding = CaseFolding::Default);

/// Simple case folding of a code point, which keeps the number of characters: `ß` stays.
[[nodiscard]] ZORV_HOST_EXPORT std::int32_t foldCodePoint(std::int32_t codePoint) noexcept;

}  // namespace Zorv
