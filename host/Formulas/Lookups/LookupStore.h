#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <unordered_map>

#include <boost/container_hash/hash.hpp>

#include "Formulas/Lookups/LookupIndex.h"
#include "Formulas/Lookups/LookupKey.h"

namespace Zorv::Formulas {

/// The indexes that several threads share, each made once, when it pays.
///
/// Threads: obtain() may be called from several threads. An index that it gave stays valid as long
/// as the store does, and is read without a lock.
class LookupStore {
public:
  /// What all indexes together may take, in bytes.
  static constexpr std::size_t maximalMemory = std::size_t{256} << 20U;

  /// What asking costs without an index, and what the index costs, counted in cells.
  struct Effort {
    std::uint64_t spared = 0;
    std::uint64_t price = 0;
  };

  /// Takes what an index may need at most; tests give less.
  explicit LookupStore(std::size_t memoryLimit = maximalMemory) noexcept
      : _freeMemory(memoryLimit) {}

  /// The index of a key, or null where there is none (yet).
  ///
  /// It is made by `make` when it is asked for again and again, and what it would have spared
  /// outweighs what it costs: a range that each cell has for itself does not come so far. Whoever
  /// asks while another thread makes it is told that there is none, and does not wait. There is
  /// none where the memory does not suffice.
  [[nodiscard]] LookupIndex const* obtain(
      LookupKey const& key, Effort effort,
      std::function<std::unique_ptr<LookupIndex const>()> const& make);

private:
  enum class State : std::uint8_t { Counting, InTheMaking, Ready, Refused };

  struct Entry {
    State state = State::Counting;
    std::uint32_t timesAsked = 0;
    std::uint64_t spared = 0;
    std::unique_ptr<LookupIndex const> index;
  };

  /// Whether the caller is the one to make the index; the memory for it is taken then.
  [[nodiscard]] bool claim(LookupKey const& key, Effort effort, LookupIndex const*& ready);
  void put(LookupKey const& key, Effort effort, std::unique_ptr<LookupIndex const> index);
  void forgetCounts();

  std::mutex _mutex;
  std::unordered_map<LookupKey, Entry, boost::hash<LookupKey>> _entries;
  std::size_t _countingEntries = 0;
  std::size_t _freeMemory;
};

}  // namespace Zorv::Formulas
