#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <string_view>

/// Texts in UTF-8, counted in characters (code points). A byte that belongs to no character counts
/// as one.
namespace Zorv::Formulas {

[[nodiscard]] std::size_t countCharacters(std::string_view text) noexcept;

/// The bytes that the first `count` characters take, or all of them.
[[nodiscard]] std::size_t bytesOfCharacters(std::string_view text, std::size_t count) noexcept;

/// Takes the first character away from a text that is not empty. Letter case is folded.
[[nodiscard]] std::int32_t takeFolded(std::string_view& text) noexcept;

/// Orders texts without regard to letter case, by the code points of the folded characters.
/// Allocates nothing.
[[nodiscard]] std::strong_ordering compareTexts(std::string_view a, std::string_view b) noexcept;

[[nodiscard]] inline bool equalTexts(std::string_view a, std::string_view b) noexcept {
  if (!a.empty() && !b.empty()) {
    // Most texts differ in their first letters, which in ASCII are alike but for one bit.
    constexpr unsigned caseBit = 0x20;
    auto const firstA = static_cast<unsigned char>(a.front());
    auto const firstB = static_cast<unsigned char>(b.front());
    if ((firstA | firstB) < 0x80 && (firstA | caseBit) != (firstB | caseBit)) {
      return false;
    }
  }
  return compareTexts(a, b) == std::strong_ordering::equal;
}

}  // namespace Zorv::Formulas
