#include "Formulas/Lookups/HashIndex.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Zorv::Formulas {

void HashIndex::reserve(std::size_t count) {
  _slots.assign(std::max(minSlots, std::bit_ceil(count * 2)), Slot());
}

void HashIndex::shrink() {
  std::size_t const needed = std::max(minSlots, std::bit_ceil(std::size_t{_size} * 2));
  if (needed < _slots.size()) {
    resize(needed);
  }
}

void HashIndex::resize(std::size_t slotCount) {
  std::size_t const mask = slotCount - 1;
  std::vector<Slot> slots(slotCount, Slot());
  for (Slot const& old : _slots) {
    if (old.index == none) {
      continue;
    }
    std::size_t slot = old.hash & mask;
    while (slots[slot].index != none) {
      slot = (slot + 1) & mask;
    }
    slots[slot] = old;
  }
  _slots = std::move(slots);
}

}  // namespace Zorv::Formulas
