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
#include "Formulas/Lookups/SharedWork.h"

namespace Zorv::Formulas {

/// The indexes that several threads share, each made once, when it pays.
///
/// Threads: obtain() may be called from several threads. An index that it gave stays valid as long
/// as the store does, and is read without a lock.
class LookupStore {
public:
  /// What all indexes together may take, in bytes.
  static constexpr std::size_t maximalMemory = std::size_t{256} << 20U;
  /// The most that an index takes for a cell while it is made: a column of different texts.
  static constexpr std::size_t memoryOfCell = 128;
  /// What even an empty index is taken to need, which bounds their number.
  static constexpr std::size_t memoryOfIndex = 4096;

  /// What asking costs without an index, and what the index costs, counted in cells.
  struct Effort {
    std::uint64_t spared = 0;
    std::uint64_t price = 0;
    bool isShared = false;  ///< whether the index is made in parts that several threads may do
  };

  /// Makes an index; one that is made in parts has them done by the work.
  using Make = std::function<std::unique_ptr<LookupIndex const>(SharedWork&)>;

  /// Takes what an index may need at most; tests give less.
  explicit LookupStore(std::size_t memoryLimit = maximalMemory) noexcept
      : _freeMemory(memoryLimit) {}

  /// The index of a key, or null where there is none (yet).
  ///
  /// It is made by `make` when it is asked for again and again, and what it would have spared
  /// outweighs what it costs: a range that each cell has for itself does not come so far. Whoever
  /// asks while another thread makes it helps until it is made, if it is made in parts, and is told
  /// otherwise that there is none. So is a thread that asks from within the making of an index: it
  /// never waits. There is none where the memory does not suffice.
  ///
  /// What `make` throws reaches its caller, and there will be no such index; std::bad_alloc is as
  /// good as a lack of memory.
  [[nodiscard]] LookupIndex const* obtain(LookupKey const& key, Effort effort, Make const& make);

private:
  enum class State : std::uint8_t { Counting, InTheMaking, Ready, Refused };

  struct Entry {
    State state = State::Counting;
    std::uint32_t timesAsked = 0;
    std::uint64_t spared = 0;
    std::shared_ptr<SharedWork> work;  ///< while the index is made, if it is made in parts
    std::unique_ptr<LookupIndex const> index;
  };

  /// What is to be done by a thread that asks: to make the index if it is the one to do so, for
  /// which the memory is taken then; to help; or nothing but to take what is ready.
  struct Task {
    bool isToMake = false;
    std::shared_ptr<SharedWork> work;  ///< of the making, own or not
    LookupIndex const* ready = nullptr;
  };
  [[nodiscard]] Task claim(LookupKey const& key, Effort effort);
  /// Makes the index that was claimed.
  [[nodiscard]] LookupIndex const* makeClaimed(LookupKey const& key, Effort effort,
                                               Make const& make, SharedWork& work);
  void put(LookupKey const& key, Effort effort, std::unique_ptr<LookupIndex const> index);
  [[nodiscard]] LookupIndex const* findReady(LookupKey const& key);
  void forgetCounts();

  std::mutex _mutex;
  std::unordered_map<LookupKey, Entry, boost::hash<LookupKey>> _entries;
  std::size_t _countingEntries = 0;
  std::size_t _freeMemory;
};

}  // namespace Zorv::Formulas
