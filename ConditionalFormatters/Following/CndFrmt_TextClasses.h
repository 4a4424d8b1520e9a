#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellIdentities.h"
#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_CellTally.h"
#include "ConditionalFormatters/Following/CndFrmt_Salt.h"
#include "ConditionalFormatters/Following/CndFrmt_TextRecords.h"
#include "FormulaModel/ValueKey.h"

namespace Zorv::ConditionalFormatters {

/// True for the bits of a text that is known by its index.
[[nodiscard]] constexpr bool isTextBits(ValueBits bits) noexcept {
  return bits != noValueBits && bits >= FormulaModel::ValueKey::ofTextIndex(0).bits();
}

/// The index of a text among TextClasses.
[[nodiscard]] constexpr TextRecords::Index textOfBits(ValueBits bits) noexcept {
  return static_cast<TextRecords::Index>(bits);
}

/// Counts the cells that have each text, as ValueClasses does for other values. Each text is kept
/// once for as long as cells have it. Texts are equal byte by byte.
///
/// Callers give the hashes, so that they may choose ones that are the same for texts that are equal
/// in another way, too: forEachOfHash() then finds all of them without an index of its own.
///
/// Hash tables with open addressing, 256 of them, so that none grows for long. A text takes five to
/// eleven bytes there, beside its record.
class TextClasses {
public:
  using Index = TextRecords::Index;

  /// The hash of texts that are told from each other byte by byte alone.
  [[nodiscard]] static std::uint32_t hashOf(std::string_view text) noexcept;

  /// The index of a text, to be given a cell. A text has one hash. None if too many texts crowd at
  /// one place of the hash table, as texts that were chosen for it do. If this throws, nothing has
  /// changed.
  [[nodiscard]] std::optional<Index> getOrCreate(std::string_view text, std::uint32_t unsaltedHash);

  /// Adds a cell to the class of a text.
  OtherCells add(Index text, CellIdentity cell) noexcept;
  /// Removes a cell, which must be there. A text that no cell has is forgotten.
  OtherCells remove(Index text, CellIdentity cell) noexcept;

  /// Fetches what is kept of a text into the cache while other work is done.
  void prefetch(Index text) const noexcept { _records.prefetch(text); }

  /// How many cells have a text.
  [[nodiscard]] std::uint64_t count(Index text) const noexcept {
    return _records.getCells(text).count();
  }
  /// Good until no cell has the text.
  [[nodiscard]] std::string_view at(Index text) const noexcept { return _records.textOf(text); }
  /// How many texts there are.
  [[nodiscard]] std::size_t size() const noexcept;

  /// Calls `visit(text, count)` for each text with a hash, and the number of its cells.
  template <class Visit>
  void forEachOfHash(std::uint32_t unsaltedHash, Visit const& visit) const {
    std::uint32_t const hash = addSalt(unsaltedHash);
    if (_pieces.empty() || pieceOf(hash).slots.empty()) {
      return;
    }
    Piece const& piece = pieceOf(hash);
    std::size_t const mask = piece.slots.size() - 1;
    for (std::size_t slot = hash & mask; piece.slots[slot] != 0; slot = (slot + 1) & mask) {
      Index const text = piece.slots[slot] - 1;
      if (_records.hashOf(text) == hash) {
        visit(_records.textOf(text), _records.getCells(text).count());
      }
    }
  }

  /// About how many bytes it takes, without the memory that long texts have of their own.
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  static constexpr unsigned mostSteps = 512;
  static constexpr unsigned pieceBits = 8;

  /// One of the hash tables.
  struct Piece {
    std::vector<Index> slots;  ///< index + 1, or 0 if empty; none, or a power of two
    std::size_t used = 0;
  };

  /// Only texts of one hash can be chosen so that they crowd: others come to lie at random.
  [[nodiscard]] std::uint32_t addSalt(std::uint32_t hash) const noexcept {
    return static_cast<std::uint32_t>((hash * _salt) >> 32U);
  }
  [[nodiscard]] static std::size_t pieceIndexOf(std::uint32_t hash) noexcept {
    return hash >> (32U - pieceBits);
  }
  [[nodiscard]] Piece const& pieceOf(std::uint32_t hash) const noexcept {
    return _pieces[pieceIndexOf(hash)];
  }
  void grow(Piece& piece) const;
  void forget(Index text) noexcept;
  void removeSlot(Piece& piece, std::size_t gap) const noexcept;

  std::vector<Piece> _pieces;  ///< none as long as there was no text
  TextRecords _records;
  std::uint64_t _salt = drawSalt() | 1U;  ///< an odd multiplier
};

}  // namespace Zorv::ConditionalFormatters
