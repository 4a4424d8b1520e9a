#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellIdentities.h"
#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_CellTally.h"
#include "ConditionalFormatters/Following/CndFrmt_Salt.h"

namespace Zorv::ConditionalFormatters {

/// Counts the cells that have each value, and names the cell whose value is no longer, or now,
/// that of others, too.
///
/// There is no list of cells, see CellTally: sixteen bytes for a class, in hash tables with open
/// addressing. There are 256 of them, so that none grows for long.
class ValueClasses {
public:
  /// Adds a cell to the class of its value.
  OtherCells add(ValueBits value, CellIdentity cell);
  /// Removes a cell, which must be there.
  OtherCells remove(ValueBits value, CellIdentity cell);

  /// Fetches the class of a value into the cache while other work is done.
  void prefetch(ValueBits value) const noexcept;

  /// How many cells have a value.
  [[nodiscard]] std::uint64_t count(ValueBits value) const noexcept;

  /// About how many bytes it takes.
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  struct Slot {
    ValueBits value;
    CellTally cells;  ///< none in an empty slot
  };

  /// One of the hash tables.
  struct Piece {
    std::vector<Slot> slots;  ///< none, or a power of two
    std::size_t used = 0;
  };

  static constexpr unsigned pieceBits = 8;

  [[nodiscard]] std::uint64_t hashOf(ValueBits value) const noexcept;
  /// The slot of a value, or the empty one where it belongs. Requires that there is an empty slot.
  [[nodiscard]] std::size_t findSlot(Piece const& piece, ValueBits value) const noexcept;
  void grow(Piece& piece);
  void removeSlot(Piece& piece, std::size_t gap) noexcept;

  [[nodiscard]] std::size_t pieceIndexOf(ValueBits value) const noexcept {
    return hashOf(value) >> (64U - pieceBits);
  }

  std::vector<Piece> _pieces;  ///< none as long as there is no value
  std::uint64_t _salt = drawSalt();
};

}  // namespace Zorv::ConditionalFormatters
