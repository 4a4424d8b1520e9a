#pragma once

#include <bit>
#include <compare>
#include <cstdint>

#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaValue.h"

namespace Zorv::FormulaModel {

/// A value in 64 bits, for hash tables and sorting. A number is its own bits; the other kinds lie
/// among the NaNs.
///
/// Equal values have equal keys. Different values have different keys, except texts: their key is a
/// hash that the caller gives, and so defines which texts are equal. The order of keys has no
/// meaning. Constant time, never throws.
class ValueKey {
public:
  /// Indeterminate, so that a vector of keys need not be written twice.
  ValueKey() = default;

  /// Requires a number that is not NaN. Both zeros have one key.
  [[nodiscard]] static constexpr ValueKey ofNumber(double number) noexcept {
    return ValueKey(std::bit_cast<std::uint64_t>(number == 0.0 ? 0.0 : number));
  }
  /// The key of a truth value.
  [[nodiscard]] static constexpr ValueKey ofBoolean(bool value) noexcept {
    return ValueKey(booleanBits | static_cast<std::uint64_t>(value));
  }
  /// The key of an error.
  [[nodiscard]] static constexpr ValueKey ofError(FormulaErrorCode code) noexcept {
    return ValueKey(errorBits | static_cast<std::uint64_t>(code));
  }
  /// The key of the empty value.
  [[nodiscard]] static constexpr ValueKey ofEmpty() noexcept { return ValueKey(emptyBits); }
  /// The key of a text by its hash.
  [[nodiscard]] static constexpr ValueKey ofTextHash(std::uint64_t hash) noexcept {
    return ValueKey(textBits | mix(hash));
  }
  /// The key of a text that is known by its index in a list, not by its hash.
  [[nodiscard]] static constexpr ValueKey ofTextIndex(std::uint32_t index) noexcept {
    return ValueKey(textBits | index);
  }

  /// True for the key of a text.
  [[nodiscard]] constexpr bool isText() const noexcept { return _bits >= textBits; }
  /// The index that the key was made from; see ofTextIndex().
  [[nodiscard]] constexpr std::uint32_t textIndex() const noexcept {
    return static_cast<std::uint32_t>(_bits);
  }
  /// The key as an integer.
  [[nodiscard]] constexpr std::uint64_t bits() const noexcept { return _bits; }
  /// A hash whose bits all depend on all bits of the key: whole numbers differ in a few bits only.
  [[nodiscard]] constexpr std::uint64_t hash() const noexcept { return mix(_bits); }

  friend constexpr bool operator==(ValueKey, ValueKey) noexcept = default;
  friend constexpr auto operator<=>(ValueKey, ValueKey) noexcept = default;

private:
  static constexpr std::uint64_t booleanBits = 0x7FF8'0000'0000'0100;
  static constexpr std::uint64_t errorBits = 0x7FF8'0000'0000'0200;
  static constexpr std::uint64_t emptyBits = 0x7FF8'0000'0000'0300;
  /// Texts take the NaNs with a sign.
  static constexpr std::uint64_t textBits = 0xFFF8'0000'0000'0000;

  explicit constexpr ValueKey(std::uint64_t bits) noexcept : _bits(bits) {}

  [[nodiscard]] static constexpr std::uint64_t mix(std::uint64_t bits) noexcept {
    bits ^= bits >> 32U;
    bits *= 0xD6E8FEB86659FD93U;
    bits ^= bits >> 32U;
    bits *= 0xD6E8FEB86659FD93U;
    return bits ^ (bits >> 32U);
  }

  std::uint64_t _bits;
};

/// The key of a value; `hashText(string)` gives the hash of a text. Requires that a number is not
/// NaN.
template <class HashText>
[[nodiscard]] ValueKey makeValueKey(FormulaValue const& value, HashText const& hashText) {
  switch (value.which()) {
    case FormulaValueKind::Number:
      return ValueKey::ofNumber(boost::get<FormulaNumber>(value).value.get());
    case FormulaValueKind::String:
      return ValueKey::ofTextHash(hashText(boost::get<FormulaString>(value).value));
    case FormulaValueKind::Boolean:
      return ValueKey::ofBoolean(boost::get<FormulaBoolean>(value).value);
    case FormulaValueKind::Error:
      return ValueKey::ofError(boost::get<FormulaError>(value).code);
    default:
      return ValueKey::ofEmpty();
  }
}

}  // namespace Zorv::FormulaModel
