#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Zorv::Formulas {

/// Open-addressing hash table from hash to dense index; the caller supplies equality.
///
/// Indexes count from 0 in the order of adding. At most half full: 16 to 32 bytes an index once it
/// is shrunk.
class HashIndex {
public:
  static constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();

  HashIndex() : _slots(minSlots, Slot()) {}

  /// Makes room for some indexes, so that the table need not grow. Requires an empty table.
  void reserve(std::size_t count);
  /// Gives back unused room.
  void shrink();

  /// The index with a hash for which `isEqual(index)` is true, or `none`. Constant time.
  template <class IsEqual>
  [[nodiscard]] std::uint32_t find(std::uint32_t hash, IsEqual const& isEqual) const noexcept {
    return _slots[findSlot(hash, isEqual)].index;
  }
  /// The same, but adds the next index where there is none. Constant time on average.
  template <class IsEqual>
  [[nodiscard]] std::uint32_t getOrCreate(std::uint32_t hash, IsEqual const& isEqual) {
    Slot& slot = _slots[findSlot(hash, isEqual)];
    if (slot.index != none) {
      return slot.index;
    }
    std::uint32_t const index = _size++;
    slot = {hash, index};
    if (std::size_t{_size} * 2 > _slots.size()) {
      resize(_slots.size() * 2);
    }
    return index;
  }

  [[nodiscard]] std::uint32_t size() const noexcept { return _size; }
  [[nodiscard]] std::size_t memory() const noexcept { return _slots.capacity() * sizeof(Slot); }

private:
  /// The hash beside the index saves most calls of `isEqual`.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t index = none;
  };

  static constexpr std::size_t minSlots = 16;

  /// The slot of the index, or the free one where it would go.
  template <class IsEqual>
  [[nodiscard]] std::size_t findSlot(std::uint32_t hash, IsEqual const& isEqual) const noexcept {
    std::size_t const mask = _slots.size() - 1;
    std::size_t slot = hash & mask;
    while (_slots[slot].index != none &&
           (_slots[slot].hash != hash || !isEqual(_slots[slot].index))) {
      slot = (slot + 1) & mask;
    }
    return slot;
  }
  void resize(std::size_t slotCount);

  std::vector<Slot> _slots;  ///< a power of two
  std::uint32_t _size = 0;
};

}  // namespace Zorv::Formulas
