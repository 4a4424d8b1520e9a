#include "Formulas/Lookups/ValueTable.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <utility>

#include "Formulas/Evaluation/Texts.h"

namespace Zorv::Formulas {

namespace {

/// The number in slots that are free; also the lower half of a text's key.
constexpr std::uint32_t noNumber = std::numeric_limits<std::uint32_t>::max();
constexpr unsigned halfBits = 32;

/// Spreads what differs in a few bits only, such as whole numbers, over all of them.
constexpr std::uint64_t mix(std::uint64_t bits) noexcept {
  bits ^= bits >> 32U;
  bits *= 0xD6E8FEB86659FD93U;
  bits ^= bits >> 32U;
  bits *= 0xD6E8FEB86659FD93U;
  return bits ^ (bits >> 32U);
}

/// Equal for texts that differ in letter case only.
std::uint64_t hashText(std::string_view text) noexcept {
  std::uint64_t hash = 0xCBF29CE484222325U;
  while (!text.empty()) {
    hash = (hash ^ static_cast<std::uint64_t>(takeFolded(text))) * 0x100000001B3U;
  }
  return mix(hash);
}

}  // namespace

ValueTable::ValueTable() : _slots(16, Slot{0, noNumber}) {}

ValueTable::Key ValueTable::keyOf(Value const& value) noexcept {
  switch (value.kind()) {
    case Value::Kind::Number:
      // Both zeros are one number.
      return {std::bit_cast<std::uint64_t>(value.asNumber() == 0.0 ? 0.0 : value.asNumber()),
              value.kind()};
    case Value::Kind::Text:
      return {hashText(value.asText()) >> halfBits << halfBits, value.kind()};
    case Value::Kind::Boolean:
      return {value.asBoolean() ? 1U : 0U, value.kind()};
    default:
      return {static_cast<std::uint64_t>(value.asError()), value.kind()};
  }
}

std::uint32_t ValueTable::hash(Key const& key) noexcept {
  std::uint64_t const bits = key.kind == Value::Kind::Text ? key.bits >> halfBits : key.bits;
  return static_cast<std::uint32_t>(mix(bits + static_cast<std::uint64_t>(key.kind)));
}

bool ValueTable::isEqual(std::uint32_t number, Key const& key, Value const& value) const noexcept {
  if (key.kind != Value::Kind::Text) {
    return _keys[number] == key.bits && _kinds[number] == key.kind;
  }
  return _keys[number] >> halfBits == key.bits >> halfBits && _kinds[number] == key.kind &&
         equalTexts(_texts[_keys[number] & noNumber], value.asText());
}

bool ValueTable::isNumberOf(std::uint32_t number, Value const& value) const noexcept {
  if (_kinds[number] != value.kind()) {
    return false;
  }
  // Comparing a text costs less than its hash.
  return value.isText() ? equalTexts(_texts[_keys[number] & noNumber], value.asText())
                        : _keys[number] == keyOf(value).bits;
}

std::size_t ValueTable::findSlot(Key const& key, Value const& value) const noexcept {
  std::size_t const mask = _slots.size() - 1;
  std::uint32_t const itsHash = hash(key);
  std::size_t slot = itsHash & mask;
  while (_slots[slot].number != noNumber &&
         (_slots[slot].hash != itsHash || !isEqual(_slots[slot].number, key, value))) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

std::optional<std::uint32_t> ValueTable::find(Value const& value) const noexcept {
  if (value.isEmpty() || !value.isSingle()) {
    return std::nullopt;
  }
  std::uint32_t const number = _slots[findSlot(keyOf(value), value)].number;
  return number == noNumber ? std::nullopt : std::optional(number);
}

void ValueTable::obtain(std::span<Value const> values, std::span<std::uint32_t> numbers) {
  constexpr std::size_t most = 32;
  std::array<Key, most> keys;
  for (; values.size() > most; values = values.subspan(most), numbers = numbers.subspan(most)) {
    obtain(values.first(most), numbers.first(most));
  }
  std::ranges::transform(values, keys.begin(), keyOf);
  std::size_t const mask = _slots.size() - 1;
  for (std::size_t i = 0; i < values.size(); ++i) {
    prefetch(_slots, hash(keys[i]) & mask);
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    prepare(_slots[hash(keys[i]) & mask].number);
  }
  for (std::size_t i = 0; i < values.size(); ++i) {
    numbers[i] = obtain(keys[i], values[i]);
  }
}

std::uint32_t ValueTable::obtain(Key const& key, Value const& value) {
  std::size_t const slot = findSlot(key, value);
  if (_slots[slot].number != noNumber) {
    return _slots[slot].number;
  }
  std::uint32_t const number = size();
  _slots[slot] = {hash(key), number};
  _keys.push_back(value.isText() ? key.bits | _texts.size() : key.bits);
  _kinds.push_back(key.kind);
  if (value.isText()) {
    _texts.push_back(value.asText());
  }
  if (_keys.size() * 2 > _slots.size()) {
    grow();
  }
  return number;
}

void ValueTable::grow() {
  std::size_t const mask = _slots.size() * 2 - 1;
  std::vector<Slot> slots(mask + 1, Slot{0, noNumber});
  for (Slot const& old : _slots) {
    if (old.number == noNumber) {
      continue;
    }
    std::size_t slot = old.hash & mask;
    while (slots[slot].number != noNumber) {
      slot = (slot + 1) & mask;
    }
    slots[slot] = old;
  }
  _slots = std::move(slots);
}

std::size_t ValueTable::memory() const noexcept {
  return _keys.capacity() * sizeof(std::uint64_t) + _kinds.capacity() +
         _texts.capacity() * sizeof(std::string_view) + _slots.capacity() * sizeof(Slot);
}

}  // namespace Zorv::Formulas
