#include "ConditionalFormatters/Following/CndFrmt_TextPool.h"

#include <functional>
#include <utility>

namespace Zorv::ConditionalFormatters {

std::optional<TextPool::Index> TextPool::acquire(std::string_view text) {
  if (_pieces.empty()) {
    _pieces.resize(pieceCount);
  }
  std::size_t const hash = std::hash<std::string_view>()(text);
  auto const shortHash = static_cast<std::uint32_t>(hash);
  Index const pieceIndex = pieceOf(hash);
  Piece& piece = _pieces[pieceIndex];
  // At most three quarters are used: longer searches cost more than the memory is worth.
  if (4 * (piece.used + 1) > 3 * piece.slots.size()) {
    grow(piece);
  }
  std::size_t const mask = piece.slots.size() - 1;
  std::size_t slot = shortHash & mask;
  for (unsigned steps = 0; piece.slots[slot] != 0; slot = (slot + 1) & mask) {
    Index const place = piece.slots[slot] - 1;
    Text& found = piece.texts[place];
    if (found.hash == shortHash && found.text == text) {
      ++found.useCount;
      return place * pieceCount + pieceIndex;
    }
    if (++steps == mostSteps) {
      return std::nullopt;
    }
  }
  std::string own(text);
  Index const place = takeFree(piece);
  piece.texts[place] = {std::move(own), shortHash, 1};
  piece.slots[slot] = place + 1;
  ++piece.used;
  return place * pieceCount + pieceIndex;
}

void TextPool::release(Index index) noexcept {
  Piece& piece = _pieces[index % pieceCount];
  Index const place = index / pieceCount;
  Text& released = piece.texts[place];
  if (--released.useCount > 0) {
    return;
  }
  std::size_t const mask = piece.slots.size() - 1;
  std::size_t slot = released.hash & mask;
  while (piece.slots[slot] != place + 1) {
    slot = (slot + 1) & mask;
  }
  removeSlot(piece, slot);
  --piece.used;
  released.text = std::string();
  released.useCount = std::exchange(piece.firstFree, place);
}

std::uint32_t TextPool::countUses(std::string_view text) const noexcept {
  std::size_t const hash = std::hash<std::string_view>()(text);
  if (_pieces.empty() || _pieces[pieceOf(hash)].slots.empty()) {
    return 0;
  }
  Piece const& piece = _pieces[pieceOf(hash)];
  auto const shortHash = static_cast<std::uint32_t>(hash);
  std::size_t const mask = piece.slots.size() - 1;
  for (std::size_t slot = shortHash & mask; piece.slots[slot] != 0; slot = (slot + 1) & mask) {
    Text const& found = piece.texts[piece.slots[slot] - 1];
    if (found.hash == shortHash && found.text == text) {
      return found.useCount;
    }
  }
  return 0;
}

std::size_t TextPool::size() const noexcept {
  std::size_t count = 0;
  for (Piece const& piece : _pieces) {
    count += piece.used;
  }
  return count;
}

std::size_t TextPool::countBytes() const noexcept {
  std::size_t bytes = _pieces.capacity() * sizeof(Piece);
  for (Piece const& piece : _pieces) {
    bytes += piece.texts.capacity() * sizeof(Text) + piece.slots.capacity() * sizeof(Index);
  }
  return bytes;
}

void TextPool::grow(Piece& piece) {
  constexpr std::size_t leastSlots = 8;
  std::vector<Index> slots(piece.slots.empty() ? leastSlots : 2 * piece.slots.size());
  std::size_t const mask = slots.size() - 1;
  for (Index const old : piece.slots) {
    if (old != 0) {
      std::size_t slot = piece.texts[old - 1].hash & mask;
      while (slots[slot] != 0) {
        slot = (slot + 1) & mask;
      }
      slots[slot] = old;
    }
  }
  piece.slots = std::move(slots);
}

/// Moves later slots into the gap, as if the text had never been there.
void TextPool::removeSlot(Piece& piece, std::size_t gap) noexcept {
  std::size_t const mask = piece.slots.size() - 1;
  for (std::size_t next = (gap + 1) & mask; piece.slots[next] != 0; next = (next + 1) & mask) {
    std::size_t const home = piece.texts[piece.slots[next] - 1].hash & mask;
    if (((next - home) & mask) >= ((next - gap) & mask)) {
      piece.slots[gap] = piece.slots[next];
      gap = next;
    }
  }
  piece.slots[gap] = 0;
}

TextPool::Index TextPool::takeFree(Piece& piece) {
  if (piece.firstFree == none) {
    // By an eighth, since a million texts take the more memory the more room is left.
    if (piece.texts.size() == piece.texts.capacity()) {
      piece.texts.reserve(piece.texts.size() + piece.texts.size() / 8 + 8);
    }
    piece.texts.emplace_back();
    return static_cast<Index>(piece.texts.size() - 1);
  }
  Index const place = piece.firstFree;
  piece.firstFree = piece.texts[place].useCount;
  return place;
}

}  // namespace Zorv::ConditionalFormatters
