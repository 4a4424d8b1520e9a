#include "Formulas/Lookups/ValueDictionary.h"

namespace Zorv::Formulas {

void ValueDictionary::join() {
  _first.clear();
  First next;
  for (ValuePartition const& partition : _partitions) {
    _first.push_back(next);
    next.index += partition.size();
    next.text += partition.textCount();
  }
  _keys.resize(next.index, boost::container::default_init);
  _texts.resize(next.text);
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
  return index == HashIndex::none ? std::nullopt : std::optional(firstIndex(partition) + index);
}

std::size_t ValueDictionary::memory() const noexcept {
  std::size_t memory =
      memoryOf(_partitions) + memoryOf(_first) + memoryOf(_keys) + memoryOf(_texts);
  for (ValuePartition const& partition : _partitions) {
    memory += partition.memory();
  }
  return memory;
}

}  // namespace Zorv::Formulas
