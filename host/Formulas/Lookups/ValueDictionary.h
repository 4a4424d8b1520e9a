#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <boost/container/vector.hpp>

#include "Formulas/Lookups/KeyedValue.h"
#include "Formulas/Lookups/Memory.h"
#include "Formulas/Lookups/ValuePartition.h"
#include "Formulas/Values/Value.h"
#include "Utils/HashPartitions.h"
#include "Utils/Prefetch.h"

namespace Zorv::Formulas {

/// Dictionary of distinct values: a dense index for each, from 0.
///
/// Built in stages, so that several threads can share the work: the partitions are filled and put,
/// then join() lays out their indexes, those of the first partition being the lowest, then, after
/// makeRoom(), settle() moves the values of each. Later values come in one by one. Eight bytes a
/// value and 16 to 32 for its slots, for a text 16 more, and a copy of it unless texts are long:
/// see ValuePartition.
///
/// Threads: different partitions may be put, and later settled, by several threads at once.
class ValueDictionary {
public:
  /// For the values of so many cells at most.
  explicit ValueDictionary(std::uint64_t cellCount)
      : _hashPartitions(cellCount),
        _partitions(_hashPartitions.count()),
        _mostLater(static_cast<std::size_t>(cellCount / 16 + 64)) {}

  [[nodiscard]] HashPartitions const& hashPartitions() const noexcept { return _hashPartitions; }
  /// The partition to which a value belongs.
  [[nodiscard]] std::size_t partitionOf(ValueKey key) const noexcept {
    return _hashPartitions.indexOf(key.bits());
  }
  /// Takes over a filled partition.
  void put(std::size_t partition, ValuePartition&& values) noexcept {
    _partitions[partition] = std::move(values);
  }

  /// Lays out the indexes. Requires that all partitions are put.
  void join();
  /// Makes room for the values of all partitions side by side. Requires join().
  void makeRoom();
  /// Moves the values of a partition to those of the others. Requires makeRoom().
  void settle(std::size_t partition) noexcept;
  /// The index of a partition's first value.
  [[nodiscard]] std::uint32_t firstIndex(std::size_t partition) const noexcept {
    return _first[partition].index;
  }

  // The rest requires that all partitions are settled.

  /// The index of a value; nothing where the dictionary lacks it.
  [[nodiscard]] std::optional<std::uint32_t> find(Value const& value) const noexcept;
  /// True if the value at an index equals a value.
  [[nodiscard]] bool isEqualAt(std::uint32_t index, Value const& value) const noexcept;
  /// Makes the next isEqualAt() for an index fast.
  void prefetchKey(std::uint32_t index) const noexcept { prefetch(_keys, index); }
  /// Some time after prefetchKey(), does the same for a text.
  void prefetchText(std::uint32_t index) const noexcept {
    if (_keys[index].isText()) {
      prefetch(_texts, _keys[index].textIndex());
    }
  }

  /// The index of a value, which is added if it is new, behind all others. Requires a single value
  /// that is not empty. If it throws std::bad_alloc, the dictionary may only be destroyed.
  [[nodiscard]] std::uint32_t getOrAdd(Value const& value);
  /// False when so many values have been added that it is better to build the dictionary again: one
  /// for 16 cells, and 64.
  [[nodiscard]] bool hasRoom() const noexcept { return _later.size() < _mostLater; }
  /// True if it borrows a text: texts are long.
  [[nodiscard]] bool borrowsTexts() const noexcept;

  /// How many values there are, once there is room for them.
  [[nodiscard]] std::uint32_t size() const noexcept {
    return static_cast<std::uint32_t>(_keys.size());
  }
  [[nodiscard]] std::size_t memory() const noexcept;

private:
  /// Where the values and the texts of a partition begin.
  struct First {
    std::uint32_t index = 0;
    std::uint32_t text = 0;
  };

  HashPartitions _hashPartitions;
  std::vector<ValuePartition> _partitions;
  std::vector<First> _first;      ///< by partition
  ValuePartition _later;          ///< values that were added when all partitions were settled
  std::uint32_t _firstLater = 0;  ///< the index of the first one
  std::size_t _mostLater;
  // Unlike standard vectors these can grow without touching their memory: the threads that settle
  // touch it.
  boost::container::vector<ValueKey> _keys;  ///< a text is known by its index in `_texts`
  boost::container::vector<std::string_view> _texts;
};

}  // namespace Zorv::Formulas
