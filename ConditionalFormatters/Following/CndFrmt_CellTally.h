#pragma once

#include <cstdint>

#include "ConditionalFormatters/Following/CndFrmt_CellIdentities.h"

namespace Zorv::ConditionalFormatters {

/// The other cells of a class.
struct OtherCells {
  std::uint64_t count;
  CellIdentity only;  ///< the cell itself, if there is one
};

/// The cells of a class in eight bytes: their number, and the exclusive or of their identities,
/// which is that of the last cell where one is left.
///
/// A cell may be added several times. Requires that there are fewer than 2^26.
class CellTally {
public:
  CellTally() = default;
  /// Result of bits().
  explicit constexpr CellTally(std::uint64_t bits) noexcept : _bits(bits) {}

  /// Adds a cell, and gives those before it.
  constexpr OtherCells add(CellIdentity cell) noexcept {
    OtherCells const others = split();
    _bits = (_bits + oneCell) ^ cell;
    return others;
  }
  /// Removes a cell, which must be there, and gives those that are left.
  constexpr OtherCells remove(CellIdentity cell) noexcept {
    _bits = (_bits - oneCell) ^ cell;
    return split();
  }

  [[nodiscard]] constexpr std::uint64_t count() const noexcept { return _bits / oneCell; }
  [[nodiscard]] constexpr bool isEmpty() const noexcept { return _bits == 0; }
  [[nodiscard]] constexpr std::uint64_t bits() const noexcept { return _bits; }

private:
  static constexpr std::uint64_t oneCell = std::uint64_t{1} << cellIdentityBits;

  [[nodiscard]] constexpr OtherCells split() const noexcept { return {count(), _bits % oneCell}; }

  std::uint64_t _bits = 0;  ///< the number above the identities
};

}  // namespace Zorv::ConditionalFormatters
