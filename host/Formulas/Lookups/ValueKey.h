#pragma once

#include <cstdint>
#include <string_view>

#include "Formulas/Evaluation/Value.h"

namespace Zorv::Formulas {

/// A value in 64 bits: a number's own, which are never those of a NaN, and among the NaNs the other
/// kinds.
///
/// Equal values have equal keys: both zeros have one, and so have texts that differ in letter case
/// only. Different values have different keys, but for texts, of which the key is a hash.
class ValueKey {
public:
  ValueKey() = default;
  /// Requires a number, a text, a truth value or an error.
  explicit ValueKey(Value const& value) noexcept;
  /// The key by which a text is told that lies at a place of a list.
  [[nodiscard]] static ValueKey ofTextAt(std::uint32_t place) noexcept;

  [[nodiscard]] bool isText() const noexcept { return _bits >= textBits; }
  /// The place in a list that the key was made of; see ofTextAt().
  [[nodiscard]] std::uint32_t textPlace() const noexcept {
    return static_cast<std::uint32_t>(_bits);
  }
  /// Spreads what differs in a few bits only, such as whole numbers, over all of them.
  [[nodiscard]] std::uint64_t hash() const noexcept { return mix(_bits); }

  friend bool operator==(ValueKey, ValueKey) noexcept = default;

private:
  /// From here on: the NaNs with a sign.
  static constexpr std::uint64_t textBits = 0xFFF8'0000'0000'0000;

  explicit constexpr ValueKey(std::uint64_t bits) noexcept : _bits(bits) {}

  [[nodiscard]] static constexpr std::uint64_t mix(std::uint64_t bits) noexcept {
    bits ^= bits >> 32U;
    bits *= 0xD6E8FEB86659FD93U;
    bits ^= bits >> 32U;
    bits *= 0xD6E8FEB86659FD93U;
    return bits ^ (bits >> 32U);
  }
  [[nodiscard]] static std::uint64_t bitsOf(Value const& value) noexcept;
  [[nodiscard]] static std::uint64_t bitsOfText(std::string_view text) noexcept;

  std::uint64_t _bits;  ///< not set by default, so that lists of keys can be made untouched
};

}  // namespace Zorv::Formulas
