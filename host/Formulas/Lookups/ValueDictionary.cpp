#include "Formulas/Lookups/ValueDictionary.h"

#include <algorithm>

namespace Zorv::Formulas {

void ValueDictionary::join() {
  _first.clear();
  First next;
  for (ValuePartition const& partition : _partitions) {
    _first.push_back(next);
    next.index += partition.size();
    next.text += partition.textCount();
  }
  _firstLater = next.index;
  _later.allowCopies(_mostLater);
}

void ValueDictionary::makeRoom() {
  _keys.resize(_firstLater, boost::container::default_init);
  _texts.resize(_first.back().text + _partitions.back().textCount());
}

void ValueDictionary::settle(std::size_t partition) noexcept {
  _partitions[partition].moveValues(_keys.data() + firstIndex(partition), _texts.data(),
                                    _first[partition].text);
}

bool ValueDictionary::isEqualAt(std::uint32_t index, Value const& value) const noexcept {
  ValueKey const key = _keys[index];
  if (value.isText()) {
    // Comparing a text costs less than hashing it.
    return key.isText() && equalTexts(_texts[key.textIndex()], value.asText());
  }
  return !value.isEmpty() && value.isSingle() && key == makeKey(value);
}

std::optional<std::uint32_t> ValueDictionary::find(Value const& value) const noexcept {
  if (value.isEmpty() || !value.isSingle()) {
    return std::nullopt;
  }
  KeyedValue const keyed(value);
  std::size_t const partition = partitionOf(keyed.key);
  std::uint32_t const index =
      _partitions[partition].find(keyed, _keys.data() + firstIndex(partition), _texts.data());
  if (index != HashIndex::none) {
    return firstIndex(partition) + index;
  }
  if (_later.size() == 0) {
    return std::nullopt;
  }
  std::uint32_t const later = _later.find(keyed, _keys.data() + _firstLater, _texts.data());
  return later == HashIndex::none ? std::nullopt : std::optional(_firstLater + later);
}

std::uint32_t ValueDictionary::getOrAdd(Value const& value) {
  if (auto const known = find(value)) {
    return *known;
  }
  _later.addTo(_keys, _texts, KeyedValue(value));
  return size() - 1;
}

bool ValueDictionary::borrowsTexts() const noexcept {
  return _later.borrowsTexts() || std::ranges::any_of(_partitions, &ValuePartition::borrowsTexts);
}

std::size_t ValueDictionary::memory() const noexcept {
  std::size_t memory = _later.memory() + memoryOf(_partitions) + memoryOf(_first) +
                       memoryOf(_keys) + memoryOf(_texts);
  for (ValuePartition const& partition : _partitions) {
    memory += partition.memory();
  }
  return memory;
}

}  // namespace Zorv::Formulas
