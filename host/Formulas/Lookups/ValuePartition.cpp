#include "Formulas/Lookups/ValuePartition.h"

#include <algorithm>

namespace Zorv::Formulas {

void ValuePartition::reserve(std::size_t cellCount, std::size_t textCount) {
  std::size_t const count = std::min(cellCount, mostReserved);
  _indexes.reserve(count);
  _keys.reserve(count);
  _texts.reserve(std::min(textCount, count));
  allowCopies(cellCount);
}

void ValuePartition::append(KeyedValue const& value) {
  if (value.key.isText()) {
    _keys.push_back(ValueKey::ofTextIndex(textCount()));
    _texts.push_back(copy(value.text));
  } else {
    _keys.push_back(value.key);
  }
}

std::string_view ValuePartition::copy(std::string_view text) {
  if (_copies.size() + text.size() > _mostCopied) {
    _borrowsTexts = true;
    return text;
  }
  return _copies.add(text);
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
