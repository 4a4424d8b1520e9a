#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <numeric>
#include <span>
#include <vector>

namespace Zorv {

/// Radix partitioning: assigns each 64-bit key to one of a power of two of partitions.
///
/// Equal keys go to one partition, and the partitions get about the same number of distinct keys.
/// Each partition is small enough for a processor's cache, and threads can work on different ones.
/// Value type; constant time, never throws.
class HashPartitions {
public:
  /// Entries in a partition that take about half of a second-level cache.
  static constexpr std::size_t entriesPerPartition = 16'384;

  /// Partitions for so many entries at most.
  explicit HashPartitions(std::size_t entryCount) noexcept
      : _bits(std::min(maxBits,
                       static_cast<unsigned>(std::bit_width(entryCount / entriesPerPartition)))) {}

  /// The number of partitions, a power of two.
  [[nodiscard]] std::size_t count() const noexcept { return std::size_t{1} << _bits; }

  /// The index of a key's partition, below count(). The key need not be a good hash.
  [[nodiscard]] std::size_t indexOf(std::uint64_t key) const noexcept {
    // Numbers near to each other differ in a few middle bits, which the multiplication carries up.
    constexpr std::uint64_t goldenRatio = 0x9E37'79B9'7F4A'7C15;
    // Two shifts, since a shift by all 64 bits is undefined.
    return ((key ^ key >> 32U) * goldenRatio) >> 1U >> (63U - _bits);
  }

private:
  static constexpr unsigned maxBits = 8;

  unsigned _bits;
};

/// Entries in the order of the partitions of their keys; within a partition they keep their order.
///
/// Fewer than 2^32 entries, trivially copied. Linear in the number of entries.
template <class Entry>
class PartitionedEntries {
public:
  PartitionedEntries() = default;
  /// `keyOf` gives the 64-bit key of an entry.
  template <class KeyOf>
  PartitionedEntries(std::vector<Entry> const& entries, HashPartitions partitions,
                     KeyOf const& keyOf)
      : _entries(entries.size()), _ends(partitions.count()) {
    for (Entry const& entry : entries) {
      ++_ends[partitions.indexOf(std::invoke(keyOf, entry))];
    }
    // Until a partition is filled, its end is the place of its next entry.
    std::exclusive_scan(_ends.begin(), _ends.end(), _ends.begin(), std::uint32_t{0});
    for (Entry const& entry : entries) {
      _entries[_ends[partitions.indexOf(std::invoke(keyOf, entry))]++] = entry;
    }
  }

  /// All entries, partition after partition.
  [[nodiscard]] std::span<Entry> all() noexcept { return _entries; }
  /// The entries of one partition.
  [[nodiscard]] std::span<Entry> at(std::size_t partition) noexcept {
    return std::span(_entries).subspan(beginOf(partition), sizeOf(partition));
  }
  /// The entries of one partition.
  [[nodiscard]] std::span<Entry const> at(std::size_t partition) const noexcept {
    return std::span(_entries).subspan(beginOf(partition), sizeOf(partition));
  }
  /// The number of entries in a partition.
  [[nodiscard]] std::size_t sizeOf(std::size_t partition) const noexcept {
    return _ends[partition] - beginOf(partition);
  }

private:
  [[nodiscard]] std::size_t beginOf(std::size_t partition) const noexcept {
    return partition == 0 ? 0 : _ends[partition - 1];
  }

  std::vector<Entry> _entries;
  std::vector<std::uint32_t> _ends;  ///< of each partition in `_entries`
};

}  // namespace Zorv
