#include "ConditionalFormatters/Following/CndFrmt_TextPool.h"

#include <functional>
#include <utility>

namespace Zorv::ConditionalFormatters {

std::optional<TextPool::Index> TextPool::acquire(std::string_view text) {
  if (2 * (size() + 1) > _slots.size()) {
    grow();
  }
  std::size_t const hash = std::hash<std::string_view>()(text);
  std::size_t const mask = _slots.size() - 1;
  std::size_t slot = hash & mask;
  for (unsigned steps = 0; _slots[slot] != 0; slot = (slot + 1) & mask) {
    Text& found = _texts[_slots[slot] - 1];
    if (found.hash == hash && found.text == text) {
      ++found.useCount;
      return _slots[slot] - 1;
    }
    if (++steps == mostSteps) {
      return std::nullopt;
    }
  }
  Index const index = takeFree();
  _texts[index] = {std::string(text), hash, 1};
  _slots[slot] = index + 1;
  return index;
}

void TextPool::release(Index index) noexcept {
  if (--_texts[index].useCount > 0) {
    return;
  }
  std::size_t const mask = _slots.size() - 1;
  std::size_t slot = _texts[index].hash & mask;
  while (_slots[slot] != index + 1) {
    slot = (slot + 1) & mask;
  }
  removeSlot(slot);
  _texts[index].text = std::string();
  _free.push_back(index);
}

std::uint32_t TextPool::countUses(std::string_view text) const noexcept {
  if (_slots.empty()) {
    return 0;
  }
  std::size_t const hash = std::hash<std::string_view>()(text);
  std::size_t const mask = _slots.size() - 1;
  for (std::size_t slot = hash & mask; _slots[slot] != 0; slot = (slot + 1) & mask) {
    Text const& found = _texts[_slots[slot] - 1];
    if (found.hash == hash && found.text == text) {
      return found.useCount;
    }
  }
  return 0;
}

std::size_t TextPool::countBytes() const noexcept {
  return _texts.capacity() * sizeof(Text) + (_free.capacity() + _slots.capacity()) * sizeof(Index);
}

void TextPool::grow() {
  constexpr std::size_t leastSlots = 16;
  std::vector<Index> const old = std::move(_slots);
  _slots.assign(old.empty() ? leastSlots : 2 * old.size(), 0);
  for (Index const slot : old) {
    if (slot != 0) {
      _slots[findGap(_texts[slot - 1].hash)] = slot;
    }
  }
}

std::size_t TextPool::findGap(std::size_t hash) const noexcept {
  std::size_t const mask = _slots.size() - 1;
  std::size_t slot = hash & mask;
  while (_slots[slot] != 0) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

/// Moves later slots into the gap, as if the text had never been there.
void TextPool::removeSlot(std::size_t gap) noexcept {
  std::size_t const mask = _slots.size() - 1;
  for (std::size_t next = (gap + 1) & mask; _slots[next] != 0; next = (next + 1) & mask) {
    std::size_t const home = _texts[_slots[next] - 1].hash & mask;
    if (((next - home) & mask) >= ((next - gap) & mask)) {
      _slots[gap] = _slots[next];
      gap = next;
    }
  }
  _slots[gap] = 0;
}

TextPool::Index TextPool::takeFree() {
  if (_free.empty()) {
    _texts.emplace_back();
    _free.reserve(_texts.capacity());  // so that release() allocates nothing
    return static_cast<Index>(_texts.size() - 1);
  }
  Index const index = _free.back();
  _free.pop_back();
  return index;
}

}  // namespace Zorv::ConditionalFormatters
