#include "Formulas/Lookups/KeyedValue.h"

#include <cstdint>

#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

namespace {

/// FNV-1a over the folded characters.
std::uint64_t hashFolded(std::string_view text) noexcept {
  std::uint64_t hash = 0xCBF29CE484222325U;
  while (!text.empty()) {
    hash = (hash ^ static_cast<std::uint64_t>(takeFolded(text))) * 0x100000001B3U;
  }
  return hash;
}

}  // namespace

ValueKey makeKey(Value const& value) noexcept {
  switch (value.kind()) {
    case Value::Kind::Number:
      return ValueKey::ofNumber(value.asNumber());
    case Value::Kind::Text:
      return ValueKey::ofTextHash(hashFolded(value.asText()));
    case Value::Kind::Boolean:
      return ValueKey::ofBoolean(value.asBoolean());
    default:
      return ValueKey::ofError(value.asError());
  }
}

}  // namespace Zorv::Formulas
