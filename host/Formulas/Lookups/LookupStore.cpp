#include "Formulas/Lookups/LookupStore.h"

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

namespace Zorv::Formulas {

namespace {

/// A formula may use one range more than once, although each cell has another range.
constexpr std::uint32_t usesInOneFormula = 2;

/// Ranges that move with the cell are asked for once each; that many are remembered.
constexpr std::size_t mostCountingEntries = 256;

/// Whether this thread makes an index, or helps to.
thread_local bool isMaking = false;

class MakingScope {
public:
  MakingScope() noexcept : _wasMaking(std::exchange(isMaking, true)) {}
  MakingScope(MakingScope const&) = delete;
  MakingScope& operator=(MakingScope const&) = delete;
  ~MakingScope() { isMaking = _wasMaking; }

private:
  bool _wasMaking;
};

std::size_t memoryFor(LookupStore::Effort effort) noexcept {
  return effort.price * LookupStore::memoryOfCell + LookupStore::memoryOfIndex;
}

}  // namespace

LookupIndex const* LookupStore::obtain(LookupKey const& key, Effort effort, Make const& make) {
  Task const task = claim(key, effort);
  if (task.isToMake) {
    return makeClaimed(key, effort, make, *task.work);
  }
  // Two threads that each had a part of the other's index in hand would wait for ever.
  if (task.work == nullptr || isMaking) {
    return task.ready;
  }
  MakingScope const scope;
  task.work->help();
  return findReady(key);
}

LookupIndex const* LookupStore::makeClaimed(LookupKey const& key, Effort effort, Make const& make,
                                            SharedWork& work) {
  std::unique_ptr<LookupIndex const> index;
  std::exception_ptr failure;
  try {
    MakingScope const scope;
    index = make(work);
  } catch (std::bad_alloc const&) {
    // Without it the answers are the same.
  } catch (...) {
    failure = std::current_exception();
  }
  LookupIndex const* const ready = index.get();
  put(key, effort, std::move(index));
  work.close();
  if (failure) {
    std::rethrow_exception(failure);
  }
  return ready;
}

LookupStore::Task LookupStore::claim(LookupKey const& key, Effort effort) {
  std::lock_guard const lock(_mutex);
  auto found = _entries.find(key);
  if (found == _entries.end()) {
    if (_countingEntries == mostCountingEntries) {
      forgetCounts();
    }
    found = _entries.emplace(key, Entry()).first;
    ++_countingEntries;
  }
  Entry& entry = found->second;
  if (entry.state != State::Counting) {
    return {.work = entry.work, .ready = entry.index.get()};
  }
  bool const pays = ++entry.timesAsked > usesInOneFormula && entry.spared >= effort.price;
  entry.spared += effort.spared;
  if (!pays || memoryFor(effort) > _freeMemory) {
    return {};
  }
  Task task{.isToMake = true, .work = std::make_shared<SharedWork>()};
  entry.work = effort.isShared ? task.work : nullptr;
  --_countingEntries;
  _freeMemory -= memoryFor(effort);
  entry.state = State::InTheMaking;
  return task;
}

void LookupStore::put(LookupKey const& key, Effort effort,
                      std::unique_ptr<LookupIndex const> index) {
  std::lock_guard const lock(_mutex);
  Entry& entry = _entries.find(key)->second;
  std::size_t const taken = index ? index->memory() : 0;
  _freeMemory += memoryFor(effort);
  _freeMemory -= std::min(_freeMemory, std::max(taken, memoryOfIndex));
  entry.state = index ? State::Ready : State::Refused;
  entry.index = std::move(index);
  entry.work = nullptr;
}

LookupIndex const* LookupStore::findReady(LookupKey const& key) {
  std::lock_guard const lock(_mutex);
  return _entries.find(key)->second.index.get();
}

void LookupStore::forgetCounts() {
  std::erase_if(_entries, [](auto const& entry) { return entry.second.state == State::Counting; });
  _countingEntries = 0;
}

}  // namespace Zorv::Formulas
