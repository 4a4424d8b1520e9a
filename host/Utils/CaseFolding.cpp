#include "Utils/CaseFolding.h"

#include <algorithm>
#include <cstdint>

#include <unicode/uchar.h>
#include <unicode/unistr.h>

namespace Zorv {

std::string toAsciiUpper(std::string_view text) {
  std::string upper(text);
  std::ranges::transform(upper, upper.begin(), [](char c) { return toAsciiUpper(c); });
  return upper;
}

std::string foldCase(std::string_view text, CaseFolding folding) {
  // Most texts are ASCII, which needs no tables of Unicode.
  bool const isAscii =
      std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x80; });
  if (isAscii && folding == CaseFolding::Default) {
    std::string folded(text);
    std::ranges::transform(folded, folded.begin(), [](char c) { return toAsciiLower(c); });
    return folded;
  }
  icu::StringPiece const piece(text.data(), static_cast<int32_t>(text.size()));
  std::uint32_t const options =
      folding == CaseFolding::Turkic ? U_FOLD_CASE_EXCLUDE_SPECIAL_I : U_FOLD_CASE_DEFAULT;
  std::string folded;
  icu::UnicodeString::fromUTF8(piece).foldCase(options).toUTF8String(folded);
  return folded;
}

std::int32_t foldCodePoint(std::int32_t codePoint) noexcept {
  return u_foldCase(codePoint, U_FOLD_CASE_DEFAULT);
}

}  // namespace Zorv
