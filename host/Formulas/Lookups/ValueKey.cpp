#include "Formulas/Lookups/ValueKey.h"

#include <bit>

#include "Formulas/Evaluation/Texts.h"

namespace Zorv::Formulas {

namespace {

constexpr std::uint64_t booleanBits = 0x7FF8'0000'0000'0100;
constexpr std::uint64_t errorBits = 0x7FF8'0000'0000'0200;

}  // namespace

ValueKey::ValueKey(Value const& value) noexcept : _bits(bitsOf(value)) {}

ValueKey ValueKey::ofTextAt(std::uint32_t place) noexcept { return ValueKey(textBits | place); }

std::uint64_t ValueKey::bitsOf(Value const& value) noexcept {
  switch (value.kind()) {
    case Value::Kind::Number:
      // Both zeros are one number.
      return std::bit_cast<std::uint64_t>(value.asNumber() == 0.0 ? 0.0 : value.asNumber());
    case Value::Kind::Text:
      return bitsOfText(value.asText());
    case Value::Kind::Boolean:
      return booleanBits | (value.asBoolean() ? 1U : 0U);
    default:
      return errorBits | static_cast<std::uint64_t>(value.asError());
  }
}

std::uint64_t ValueKey::bitsOfText(std::string_view text) noexcept {
  std::uint64_t hash = 0xCBF29CE484222325U;
  while (!text.empty()) {
    hash = (hash ^ static_cast<std::uint64_t>(takeFolded(text))) * 0x100000001B3U;
  }
  return textBits | mix(hash);
}

}  // namespace Zorv::Formulas
