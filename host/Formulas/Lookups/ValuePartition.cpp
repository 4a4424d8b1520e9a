#include "Formulas/Lookups/ValuePartition.h"

#include <algorithm>

namespace Zorv::Formulas {

void ValuePartition::reserve(std::size_t cellCount, std::size_t textCount) {
  // In a partition of many more cells most values repeat.
  constexpr std::size_t maxReserved = 32'768;
  std::size_t const count = std::min(cellCount, maxReserved);
  _indexes.reserve(count);
  _keys.reserve(count);
  _texts.reserve(std::min(textCount, count));
}

void ValuePartition::append(KeyedValue const& value) {
  if (value.key.isText()) {
    _keys.push_back(ValueKey::ofTextIndex(textCount()));
    _texts.push_back(value.text);
  } else {
    _keys.push_back(value.key);
  }
}

void ValuePartition::shrink() {
  _indexes.shrink();
  _keys.shrink_to_fit();
  _texts.shrink_to_fit();
}

void ValuePartition::moveValues(ValueKey* keys, std::string_view* texts,
                                std::uint32_t firstText) noexcept {
  std::ranges::transform(_keys, keys, [&](ValueKey key) {
    return key.isText() ? ValueKey::ofTextIndex(firstText + key.textIndex()) : key;
  });
  std::ranges::copy(_texts, texts + firstText);
  _keys = std::vector<ValueKey>();
  _texts = std::vector<std::string_view>();
}

}  // namespace Zorv::Formulas
