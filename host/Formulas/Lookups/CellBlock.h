#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "Formulas/Lookups/KeyedValue.h"
#include "Utils/HashPartitions.h"

namespace Zorv::Formulas {

/// The cells of a row block that hold a value, with their values by hash partition. Borrows the
/// texts.
class CellBlock {
public:
  /// A cell's value.
  struct Entry {
    ValueKey key;
    std::uint32_t cell;  ///< index of the cell in the block
    /// The index of a text in the block; once the partition is filled, that of the value there.
    std::uint32_t link;
  };

  /// Makes room for some cells.
  void reserve(std::size_t cellCount) {
    _positions.reserve(cellCount);
    _entries.reserve(cellCount);
  }
  /// Adds a cell behind all others. Requires a value that is neither empty nor a reference.
  void add(std::uint32_t position, Value const& value);
  /// Ends the adding, and orders the values by partition.
  void partition(HashPartitions const& partitions);

  [[nodiscard]] std::span<std::uint32_t const> positions() const noexcept { return _positions; }
  [[nodiscard]] std::size_t sizeOf(std::size_t partition) const noexcept {
    return _partitioned.sizeOf(partition);
  }
  /// The entries of a partition, in the order of their cells.
  [[nodiscard]] std::span<Entry> entriesOf(std::size_t partition) noexcept {
    return _partitioned.at(partition);
  }
  /// The value of an entry whose link was not changed.
  [[nodiscard]] KeyedValue valueOf(Entry const& entry) const noexcept {
    return {entry.key, entry.key.isText() ? _texts[entry.link] : std::string_view()};
  }
  /// Frees the texts; then valueOf() must not be called.
  void freeTexts() noexcept { _texts = std::vector<std::string_view>(); }

private:
  /// Puts the texts in the order of the entries, in which they are read.
  void sortTexts();

  std::vector<std::uint32_t> _positions;
  std::vector<std::string_view> _texts;
  std::vector<Entry> _entries;  ///< until they are partitioned
  PartitionedEntries<Entry> _partitioned;
};

}  // namespace Zorv::Formulas
