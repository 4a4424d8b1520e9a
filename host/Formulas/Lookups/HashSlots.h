#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

namespace Zorv::Formulas {

/// Finds by a hash the number that something has, from 0 on; whoever gave the number tells whether
/// it is the right one.
///
/// A hash table with open addresses, at most half full: 16 to 32 bytes a number once it is shrunk.
class HashSlots {
public:
  static constexpr std::uint32_t noNumber = std::numeric_limits<std::uint32_t>::max();

  HashSlots() : _slots(fewest, Slot()) {}

  /// Makes room for some numbers, so that it need not grow before. Requires that none is there.
  void reserve(std::size_t count);
  /// Gives room back that is not needed.
  void shrink();

  /// The number among those with a hash for which `isIt(number)` is true, or noNumber.
  template <class IsIt>
  [[nodiscard]] std::uint32_t find(std::uint32_t hash, IsIt const& isIt) const noexcept {
    return _slots[findSlot(hash, isIt)].number;
  }
  /// The same, but adds the next number where there is none.
  template <class IsIt>
  [[nodiscard]] std::uint32_t obtain(std::uint32_t hash, IsIt const& isIt) {
    Slot& slot = _slots[findSlot(hash, isIt)];
    if (slot.number != noNumber) {
      return slot.number;
    }
    std::uint32_t const number = _size++;
    slot = {hash, number};
    if (std::size_t{_size} * 2 > _slots.size()) {
      resize(_slots.size() * 2);
    }
    return number;
  }

  [[nodiscard]] std::uint32_t size() const noexcept { return _size; }
  [[nodiscard]] std::size_t memory() const noexcept { return _slots.capacity() * sizeof(Slot); }

private:
  /// The hash beside the number spares most questions whether it is the right one.
  struct Slot {
    std::uint32_t hash = 0;
    std::uint32_t number = noNumber;
  };

  static constexpr std::size_t fewest = 16;

  /// The slot with the number, or the free one to which it goes.
  template <class IsIt>
  [[nodiscard]] std::size_t findSlot(std::uint32_t hash, IsIt const& isIt) const noexcept {
    std::size_t const mask = _slots.size() - 1;
    std::size_t slot = hash & mask;
    while (_slots[slot].number != noNumber &&
           (_slots[slot].hash != hash || !isIt(_slots[slot].number))) {
      slot = (slot + 1) & mask;
    }
    return slot;
  }
  void resize(std::size_t slotCount);

  std::vector<Slot> _slots;  ///< a power of two
  std::uint32_t _size = 0;
};

}  // namespace Zorv::Formulas
