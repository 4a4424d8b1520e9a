#include "ConditionalFormatters/Following/CndFrmt_ValueClasses.h"

#include <utility>

#include "Utils/Prefetch.h"

namespace Zorv::ConditionalFormatters {

OtherCells ValueClasses::add(ValueBits value, CellIdentity cell) {
  if (_pieces.empty()) {
    _pieces.resize(std::size_t{1} << pieceBits);
  }
  Piece& piece = _pieces[pieceIndexOf(value)];
  // At most three quarters are used: longer searches cost more than the memory is worth.
  if (4 * (piece.used + 1) > 3 * piece.slots.size()) {
    grow(piece);
  }
  Slot& slot = piece.slots[findSlot(piece, value)];
  OtherCells const others = slot.cells.add(cell);
  if (others.count == 0) {
    ++piece.used;
    slot.value = value;
  }
  return others;
}

OtherCells ValueClasses::remove(ValueBits value, CellIdentity cell) {
  Piece& piece = _pieces[pieceIndexOf(value)];
  std::size_t const index = findSlot(piece, value);
  OtherCells const others = piece.slots[index].cells.remove(cell);
  if (others.count == 0) {
    removeSlot(piece, index);
  }
  return others;
}

void ValueClasses::prefetch(ValueBits value) const noexcept {
  if (!_pieces.empty()) {
    auto const& slots = _pieces[pieceIndexOf(value)].slots;
    Zorv::prefetch(slots, hashOf(value) & (slots.size() - 1));
  }
}

std::uint64_t ValueClasses::count(ValueBits value) const noexcept {
  if (_pieces.empty()) {
    return 0;
  }
  Piece const& piece = _pieces[pieceIndexOf(value)];
  return piece.slots.empty() ? 0 : piece.slots[findSlot(piece, value)].cells.count();
}

std::size_t ValueClasses::countBytes() const noexcept {
  std::size_t bytes = _pieces.capacity() * sizeof(Piece);
  for (Piece const& piece : _pieces) {
    bytes += piece.slots.capacity() * sizeof(Slot);
  }
  return bytes;
}

std::uint64_t ValueClasses::hashOf(ValueBits value) const noexcept {
  value ^= _salt;
  // Whole numbers differ in a few bits only; all bits of the hash depend on them.
  value ^= value >> 32U;
  value *= 0xD6E8'FEB8'6659'FD93U;
  value ^= value >> 32U;
  value *= 0xD6E8'FEB8'6659'FD93U;
  return value ^ value >> 32U;
}

std::size_t ValueClasses::findSlot(Piece const& piece, ValueBits value) const noexcept {
  std::size_t const mask = piece.slots.size() - 1;
  std::size_t slot = hashOf(value) & mask;
  while (!piece.slots[slot].cells.isEmpty() && piece.slots[slot].value != value) {
    slot = (slot + 1) & mask;
  }
  return slot;
}

void ValueClasses::grow(Piece& piece) {
  constexpr std::size_t leastSlots = 8;
  Piece larger;
  larger.slots.resize(piece.slots.empty() ? leastSlots : 2 * piece.slots.size());
  larger.used = piece.used;
  for (Slot const& slot : piece.slots) {
    if (!slot.cells.isEmpty()) {
      larger.slots[findSlot(larger, slot.value)] = slot;
    }
  }
  piece = std::move(larger);
}

/// Moves later slots into the gap, as if the class had never been there.
void ValueClasses::removeSlot(Piece& piece, std::size_t gap) noexcept {
  std::size_t const mask = piece.slots.size() - 1;
  for (std::size_t next = (gap + 1) & mask; !piece.slots[next].cells.isEmpty();
       next = (next + 1) & mask) {
    std::size_t const home = hashOf(piece.slots[next].value) & mask;
    if (((next - home) & mask) >= ((next - gap) & mask)) {
      piece.slots[gap] = piece.slots[next];
      gap = next;
    }
  }
  piece.slots[gap].cells = CellTally();
  --piece.used;
}

}  // namespace Zorv::ConditionalFormatters
