#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <new>
#include <unordered_map>
#include <utility>

#include <boost/container_hash/hash.hpp>

#include "Formulas/Lookups/SharedWork.h"

namespace Zorv::Formulas {

/// Savings and cost of an index, counted in cells.
struct LookupCost {
  std::uint64_t saved = 0;  ///< by one use of the index
  std::uint64_t build = 0;  ///< to build it
  bool isShared = false;    ///< it is built in parts, which several threads may do
};

/// Memory limit of all indexes of a store.
///
/// Threads: may be used by several at once.
class LookupBudget {
public:
  /// Default limit, in bytes.
  static constexpr std::size_t defaultLimit = std::size_t{256} << 20U;
  /// The most that an index takes for a cell while it is built: a column of different texts.
  static constexpr std::size_t bytesPerCell = 128;
  /// Bytes that an empty index counts as, which bounds the number of indexes.
  static constexpr std::size_t bytesPerIndex = 4096;

  explicit LookupBudget(std::size_t limit = defaultLimit) noexcept : _free(limit) {}

  /// Reserves the memory that building an index may take; false if there is not enough.
  [[nodiscard]] bool reserve(LookupCost cost) noexcept;
  /// Releases the reserved memory, except the bytes that the index takes. Gives what stays taken.
  std::size_t settle(LookupCost cost, std::size_t bytes) noexcept;
  /// Takes or releases what an index has grown or shrunk to; false, changing nothing, if there is
  /// not enough. `taken` is what settle() gave, and is set.
  [[nodiscard]] bool resize(std::size_t& taken, std::size_t bytes) noexcept;
  /// Releases what stayed taken.
  void release(std::size_t bytes) noexcept;

private:
  std::mutex _mutex;  ///< guards `_free`
  std::size_t _free;
};

/// While in scope: this thread builds an index, or helps to.
class BuildScope {
public:
  BuildScope() noexcept;
  BuildScope(BuildScope const&) = delete;
  BuildScope& operator=(BuildScope const&) = delete;
  ~BuildScope();

  /// True if this thread is in such a scope.
  [[nodiscard]] static bool isActive() noexcept;

private:
  bool _wasActive;
};

/// Indexes of one type that several threads share, each built once, when that pays.
///
/// `Index` has a type `Key`, which boost::hash can hash, and an operation `memory()`, the bytes
/// that it takes. Ownership: borrows the budget, which must outlive it. Threads: getOrCreate() may
/// be called by several at once. An index stays valid as long as the map does, and is read without
/// a lock.
template <class Index>
class LookupMap {
public:
  using Key = typename Index::Key;
  using Build = std::function<std::unique_ptr<Index>(SharedWork&)>;

  explicit LookupMap(LookupBudget& budget) noexcept : _budget(&budget) {}

  /// The index of a key, or null where there is none, or none yet.
  ///
  /// `build(work)` is called when the index has been asked for several times, and would have saved
  /// as much as it costs: so it is not called for ranges that move with the cell. An index that is
  /// built in parts has `work` do them; a thread that asks for it meanwhile helps until it is
  /// built. Of any other index it gets null, and so does a thread that asks from within the
  /// building of an index: that one never waits. Null, too, where the budget does not suffice.
  ///
  /// An exception of `build` reaches its caller, and this index will never be built; the same holds
  /// for std::bad_alloc, but the caller gets null.
  [[nodiscard]] Index const* getOrCreate(Key const& key, LookupCost cost, Build const& build) {
    Task const task = claim(key, cost);
    if (task.isToBuild) {
      return buildClaimed(key, cost, build, *task.work);
    }
    // Two threads, each at work on a part of the index that the other waits for, would deadlock.
    if (task.work == nullptr || BuildScope::isActive()) {
      return task.ready;
    }
    BuildScope const scope;
    task.work->help();
    return find(key);
  }

  /// Forgets the indexes with a key for which `isStale(key)` is true, and that one could not be
  /// built. They are built again when they are asked for, since they did pay. Requires that no
  /// thread uses the map or an index of it.
  template <class IsStale>
  void forgetIf(IsStale const& isStale) {
    for (auto& [key, entry] : _entries) {
      if (entry.state != State::Counting && isStale(key)) {
        forget(entry);
      }
    }
  }

  /// Has the indexes with a key for which `isStale(key)` is true follow a change: `follow(key,
  /// index)` may edit the index. Forgets it, as forgetIf() does, where that gives false, and where
  /// memory does not suffice. Requires that no thread uses the map or an index of it.
  template <class IsStale, class Follow>
  void followIf(IsStale const& isStale, Follow const& follow) {
    for (auto& [key, entry] : _entries) {
      if (entry.state != State::Counting && isStale(key) && !tryFollow(key, entry, follow)) {
        forget(entry);
      }
    }
  }

  /// The index of a key, or null where there is none.
  [[nodiscard]] Index const* find(Key const& key) {
    std::lock_guard const lock(_mutex);
    auto const found = _entries.find(key);
    return found == _entries.end() ? nullptr : found->second.index.get();
  }

private:
  enum class State : std::uint8_t { Counting, Building, Ready, Refused };

  struct Entry {
    State state = State::Counting;
    std::uint32_t useCount = 0;
    std::uint64_t saved = 0;
    std::shared_ptr<SharedWork> work;  ///< while an index is built in parts
    std::unique_ptr<Index> index;
    std::size_t bytes = 0;  ///< of the budget, for the index
  };

  /// Task of a thread that asks for an index: build it, with memory that is reserved; help to build
  /// it; or use the finished one.
  struct Task {
    bool isToBuild = false;
    std::shared_ptr<SharedWork> work;
    Index const* ready = nullptr;
  };

  /// A formula may use one range several times, although each cell has another range.
  static constexpr std::uint32_t usesInOneFormula = 2;
  /// Ranges that move with the cell are asked for once each. So many of them are remembered.
  static constexpr std::size_t maxCountingEntries = 256;

  [[nodiscard]] Task claim(Key const& key, LookupCost cost) {
    std::lock_guard const lock(_mutex);
    auto found = _entries.find(key);
    if (found == _entries.end()) {
      if (_countingEntries >= maxCountingEntries) {
        forgetCounts();
      }
      found = _entries.emplace(key, Entry()).first;
      ++_countingEntries;
    }
    Entry& entry = found->second;
    if (entry.state != State::Counting) {
      return {.work = entry.work, .ready = entry.index.get()};
    }
    bool const pays = ++entry.useCount > usesInOneFormula && entry.saved >= cost.build;
    entry.saved += cost.saved;
    if (!pays || !_budget->reserve(cost)) {
      return {};
    }
    Task task{.isToBuild = true, .work = std::make_shared<SharedWork>()};
    entry.work = cost.isShared ? task.work : nullptr;
    --_countingEntries;
    entry.state = State::Building;
    return task;
  }

  [[nodiscard]] Index const* buildClaimed(Key const& key, LookupCost cost, Build const& build,
                                          SharedWork& work) {
    std::unique_ptr<Index> index;
    std::exception_ptr failure;
    try {
      BuildScope const scope;
      index = build(work);
    } catch (std::bad_alloc const&) {
      // Without the index the answers are the same.
    } catch (...) {
      failure = std::current_exception();
    }
    Index const* const ready = index.get();
    put(key, cost, std::move(index));
    work.close();
    if (failure) {
      std::rethrow_exception(failure);
    }
    return ready;
  }

  void put(Key const& key, LookupCost cost, std::unique_ptr<Index> index) {
    std::lock_guard const lock(_mutex);
    Entry& entry = _entries.find(key)->second;
    entry.bytes = _budget->settle(cost, index ? index->memory() : 0);
    entry.state = index ? State::Ready : State::Refused;
    entry.index = std::move(index);
    entry.work = nullptr;
  }

  template <class Follow>
  [[nodiscard]] bool tryFollow(Key const& key, Entry& entry, Follow const& follow) {
    try {
      return entry.index != nullptr && follow(key, *entry.index) &&
             _budget->resize(entry.bytes, entry.index->memory());
    } catch (std::bad_alloc const&) {
      // Without the index the answers are the same.
      return false;
    }
  }

  void forget(Entry& entry) noexcept {
    _budget->release(entry.bytes);
    entry.bytes = 0;
    entry.index = nullptr;
    entry.state = State::Counting;
    ++_countingEntries;
  }

  void forgetCounts() {
    std::erase_if(_entries,
                  [](auto const& entry) { return entry.second.state == State::Counting; });
    _countingEntries = 0;
  }

  LookupBudget* _budget;
  std::mutex _mutex;  ///< guards what follows
  std::unordered_map<Key, Entry, boost::hash<Key>> _entries;
  std::size_t _countingEntries = 0;
};

}  // namespace Zorv::Formulas
