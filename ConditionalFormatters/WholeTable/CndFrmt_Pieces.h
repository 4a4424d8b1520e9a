#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <numeric>
#include <span>
#include <vector>

#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {

/// Into how many pieces, as a power of two, the values of a table are parted by their keys, so that
/// one piece fits a processor's cache.
inline unsigned choosePieceBits(DOM::Table const& table) noexcept {
  constexpr std::size_t cellsInPiece = 16'384;
  constexpr int mostBits = 8;
  return static_cast<unsigned>(
      std::min(mostBits, static_cast<int>(std::bit_width(table.getCellCount() / cellsInPiece))));
}

inline std::size_t pieceOf(std::uint64_t key, unsigned pieceBits) noexcept {
  // Numbers near to each other differ in a few middle bits, which the multiplication carries up.
  constexpr std::uint64_t goldenRatio = 0x9E37'79B9'7F4A'7C15;
  return pieceBits == 0 ? 0 : ((key ^ key >> 32U) * goldenRatio) >> (64U - pieceBits);
}

/// Entries, each with a `key`, in the order of the pieces that their keys fall into: equal keys
/// fall into one piece, and about as many entries into each.
template <class Entry>
class Pieces {
public:
  Pieces() = default;
  Pieces(std::vector<Entry> const& entries, unsigned pieceBits)
      : _entries(entries.size()), _ends(std::size_t{1} << pieceBits) {
    for (Entry const& entry : entries) {
      ++_ends[pieceOf(entry.key, pieceBits)];
    }
    // Until its entries are in place, the end of a piece is where the next of them goes.
    std::exclusive_scan(_ends.begin(), _ends.end(), _ends.begin(), std::uint32_t{0});
    for (Entry const& entry : entries) {
      _entries[_ends[pieceOf(entry.key, pieceBits)]++] = entry;
    }
  }

  [[nodiscard]] std::span<Entry const> at(std::size_t piece) const noexcept {
    std::uint32_t const begin = piece == 0 ? 0 : _ends[piece - 1];
    return std::span(_entries).subspan(begin, _ends[piece] - begin);
  }

private:
  std::vector<Entry> _entries;
  std::vector<std::uint32_t> _ends;
};

}  // namespace Zorv::ConditionalFormatters
