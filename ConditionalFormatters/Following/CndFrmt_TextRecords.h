#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellTally.h"
#include "Utils/Prefetch.h"

namespace Zorv::ConditionalFormatters {

/// Texts by index, each with a hash and the cells that have it: sixteen bytes and the text, in
/// multiples of eight bytes.
///
/// The records lie in chunks that never move, so that there is neither unused room nor a pause
/// while they grow. A text of more than 48 bytes has memory of its own. The room of a record that
/// was erased serves texts of the same size again.
class TextRecords {
public:
  using Index = std::uint32_t;

  TextRecords() { _firstFree.fill(none); }

  /// Adds a text that no cell has yet. If this throws, nothing has changed.
  [[nodiscard]] Index insert(std::string_view text, std::uint32_t hash);
  void erase(Index record) noexcept;

  /// Good until the record is erased.
  [[nodiscard]] std::string_view textOf(Index record) const noexcept;
  [[nodiscard]] std::uint32_t hashOf(Index record) const noexcept {
    return static_cast<std::uint32_t>(unitAt(record + 1));
  }
  /// True if a record is that of a text with a hash.
  [[nodiscard]] bool isOf(Index record, std::string_view text, std::uint32_t hash) const noexcept {
    return unitAt(record + 1) == joinHead(text, hash) && textOf(record) == text;
  }

  /// Fetches a record into the cache while other work is done.
  void prefetch(Index record) const noexcept {
    Zorv::prefetch(*_chunks[record / unitsInChunk], record % unitsInChunk);
  }

  [[nodiscard]] CellTally getCells(Index record) const noexcept {
    return CellTally(unitAt(record));
  }
  void setCells(Index record, CellTally cells) noexcept { unitAt(record) = cells.bits(); }

  /// About how many bytes it takes, without the memory that long texts have of their own.
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  /// A record is some of these: the cells, or the next free record; the hash, below the text's
  /// length; the text, or where it is among the long ones.
  using Unit = std::uint64_t;

  static constexpr Index none = ~Index{0};
  static constexpr std::size_t unitsInChunk = 1024;
  using Chunk = std::array<Unit, unitsInChunk>;
  static constexpr std::size_t headUnits = 2;
  static constexpr std::size_t mostInPlace = 48;
  static constexpr std::size_t longKind = mostInPlace / sizeof(Unit) + 1;

  [[nodiscard]] static Unit joinHead(std::string_view text, std::uint32_t hash) noexcept;
  /// In how many units a text of a length lies in its record; longKind if it does not.
  [[nodiscard]] static std::size_t kindOf(std::size_t length) noexcept;
  [[nodiscard]] std::size_t lengthOf(Index record) const noexcept {
    return unitAt(record + 1) >> 32U;
  }
  /// A new record of a kind.
  [[nodiscard]] Index append(std::size_t kind);

  [[nodiscard]] Unit& unitAt(Index unit) noexcept {
    return (*_chunks[unit / unitsInChunk])[unit % unitsInChunk];
  }
  [[nodiscard]] Unit unitAt(Index unit) const noexcept {
    return (*_chunks[unit / unitsInChunk])[unit % unitsInChunk];
  }

  std::vector<std::unique_ptr<Chunk>> _chunks;
  Index _end = 0;                              ///< of the records, in units
  std::array<Index, longKind + 1> _firstFree;  ///< by kind
  std::deque<std::string> _longTexts;          ///< a free record keeps its place here
};

}  // namespace Zorv::ConditionalFormatters
