#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "Formulas/Lookups/ValuePiece.h"
#include "Utils/HashPartitions.h"

namespace Zorv::Formulas {

/// Some of an area's cells that hold a value, in their order, and their values, sorted into the
/// partitions of a table. Borrows the texts.
class CellBand {
public:
  /// A cell's value among those of a piece.
  struct Entry {
    ValueKey key;
    std::uint32_t cell;  ///< its number in the band
    /// Of a text its place in the band; once the piece is filled, the value's number there.
    std::uint32_t link;
  };

  /// Makes room for some cells.
  void reserve(std::size_t cellCount) {
    _positions.reserve(cellCount);
    _entries.reserve(cellCount);
  }
  /// Adds a cell behind all others; its value is neither empty nor a reference.
  void add(std::uint32_t position, Value const& value);
  /// Ends the adding.
  void partition(HashPartitions partitions);

  [[nodiscard]] std::span<std::uint32_t const> positions() const noexcept { return _positions; }
  [[nodiscard]] std::size_t sizeOf(std::size_t piece) const noexcept {
    return _partitioned.sizeOf(piece);
  }
  /// The entries of a piece, in the order of their cells.
  [[nodiscard]] std::span<Entry> entriesOf(std::size_t piece) noexcept {
    return _partitioned.at(piece);
  }
  /// The value of an entry whose link was not changed.
  [[nodiscard]] KeyedValue valueOf(Entry const& entry) const noexcept {
    return {entry.key, entry.key.isText() ? _texts[entry.link] : std::string_view()};
  }
  /// Gives the texts' memory back; valueOf() must not be called any more.
  void forgetTexts() noexcept { _texts = std::vector<std::string_view>(); }

private:
  /// Brings the texts into the order of the entries, in which they are read.
  void sortTexts();

  std::vector<std::uint32_t> _positions;
  std::vector<std::string_view> _texts;
  std::vector<Entry> _entries;  ///< until they are partitioned
  PartitionedEntries<Entry> _partitioned;
};

}  // namespace Zorv::Formulas
