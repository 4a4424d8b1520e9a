#include "ConditionalFormatters/Following/CndFrmt_TextClasses.h"

#include <functional>
#include <utility>

namespace Zorv::ConditionalFormatters {

std::uint32_t TextClasses::hashOf(std::string_view text) noexcept {
  return static_cast<std::uint32_t>(std::hash<std::string_view>()(text));
}

std::optional<TextClasses::Index> TextClasses::getOrCreate(std::string_view text,
                                                           std::uint32_t unsaltedHash) {
  std::uint32_t const hash = addSalt(unsaltedHash);
  if (_pieces.empty()) {
    _pieces.resize(std::size_t{1} << pieceBits);
  }
  Piece& piece = _pieces[pieceIndexOf(hash)];
  // At most three quarters are used: longer searches cost more than the memory is worth.
  if (4 * (piece.used + 1) > 3 * piece.slots.size()) {
    grow(piece);
  }
  std::size_t const mask = piece.slots.size() - 1;
  std::size_t slot = hash & mask;
  for (unsigned steps = 0; piece.slots[slot] != 0; slot = (slot + 1) & mask) {
    Index const found = piece.slots[slot] - 1;
    if (_records.isOf(found, text, hash)) {
      return found;
    }
    if (++steps == mostSteps) {
      return std::nullopt;
    }
  }
  Index const created = _records.insert(text, hash);
  piece.slots[slot] = created + 1;
  ++piece.used;
  return created;
}

OtherCells TextClasses::add(Index text, CellIdentity cell) noexcept {
  CellTally cells = _records.getCells(text);
  OtherCells const others = cells.add(cell);
  _records.setCells(text, cells);
  return others;
}

OtherCells TextClasses::remove(Index text, CellIdentity cell) noexcept {
  CellTally cells = _records.getCells(text);
  OtherCells const others = cells.remove(cell);
  _records.setCells(text, cells);
  if (others.count == 0) {
    forget(text);
  }
  return others;
}

std::size_t TextClasses::size() const noexcept {
  std::size_t count = 0;
  for (Piece const& piece : _pieces) {
    count += piece.used;
  }
  return count;
}

std::size_t TextClasses::countBytes() const noexcept {
  std::size_t bytes = _pieces.capacity() * sizeof(Piece) + _records.countBytes();
  for (Piece const& piece : _pieces) {
    bytes += piece.slots.capacity() * sizeof(Index);
  }
  return bytes;
}

void TextClasses::grow(Piece& piece) const {
  constexpr std::size_t leastSlots = 8;
  std::vector<Index> slots(piece.slots.empty() ? leastSlots : 2 * piece.slots.size());
  std::size_t const mask = slots.size() - 1;
  for (Index const old : piece.slots) {
    if (old != 0) {
      std::size_t slot = _records.hashOf(old - 1) & mask;
      while (slots[slot] != 0) {
        slot = (slot + 1) & mask;
      }
      slots[slot] = old;
    }
  }
  piece.slots = std::move(slots);
}

void TextClasses::forget(Index text) noexcept {
  std::uint32_t const hash = _records.hashOf(text);
  Piece& piece = _pieces[pieceIndexOf(hash)];
  std::size_t const mask = piece.slots.size() - 1;
  std::size_t slot = hash & mask;
  while (piece.slots[slot] != text + 1) {
    slot = (slot + 1) & mask;
  }
  removeSlot(piece, slot);
  --piece.used;
  _records.erase(text);
}

/// Moves later slots into the gap, as if the text had never been there.
void TextClasses::removeSlot(Piece& piece, std::size_t gap) const noexcept {
  std::size_t const mask = piece.slots.size() - 1;
  for (std::size_t next = (gap + 1) & mask; piece.slots[next] != 0; next = (next + 1) & mask) {
    std::size_t const home = _records.hashOf(piece.slots[next] - 1) & mask;
    if (((next - home) & mask) >= ((next - gap) & mask)) {
      piece.slots[gap] = piece.slots[next];
      gap = next;
    }
  }
  piece.slots[gap] = 0;
}

}  // namespace Zorv::ConditionalFormatters
