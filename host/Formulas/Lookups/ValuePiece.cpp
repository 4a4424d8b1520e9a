#include "Formulas/Lookups/ValuePiece.h"

#include <algorithm>

namespace Zorv::Formulas {

void ValuePiece::reserve(std::size_t cellCount, std::size_t textCount) {
  // Where there are many more cells, most of them repeat a value.
  constexpr std::size_t mostAtOnce = 32'768;
  std::size_t const count = std::min(cellCount, mostAtOnce);
  _slots.reserve(count);
  _keys.reserve(count);
  _texts.reserve(std::min(textCount, count));
}

void ValuePiece::append(KeyedValue const& value) {
  if (value.key.isText()) {
    _keys.push_back(ValueKey::ofTextIndex(textCount()));
    _texts.push_back(value.text);
  } else {
    _keys.push_back(value.key);
  }
}

void ValuePiece::shrink() {
  _slots.shrink();
  _keys.shrink_to_fit();
  _texts.shrink_to_fit();
}

void ValuePiece::moveValues(ValueKey* keys, std::string_view* texts,
                            std::uint32_t firstText) noexcept {
  std::ranges::transform(_keys, keys, [&](ValueKey key) {
    return key.isText() ? ValueKey::ofTextIndex(firstText + key.textIndex()) : key;
  });
  std::ranges::copy(_texts, texts + firstText);
  _keys = std::vector<ValueKey>();
  _texts = std::vector<std::string_view>();
}

}  // namespace Zorv::Formulas
