#include "Formulas/Lookups/LookupStore.h"

#include <algorithm>
#include <new>
#include <utility>

namespace Zorv::Formulas {

namespace {

/// The most that an index takes for a cell; vectors that grow have their old memory beside the new.
constexpr std::size_t memoryOfCell = 128;

/// What even an empty index is taken to need, which bounds their number.
constexpr std::size_t memoryOfIndex = 4096;

/// A formula may use one range more than once, although each cell has another range.
constexpr std::uint32_t usesInOneFormula = 2;

/// Ranges that move with the cell are asked for once each; that many are remembered.
constexpr std::size_t mostCountingEntries = 256;

std::size_t memoryFor(LookupStore::Effort effort) noexcept {
  return effort.price * memoryOfCell + memoryOfIndex;
}

}  // namespace

LookupIndex const* LookupStore::obtain(
    LookupKey const& key, Effort effort,
    std::function<std::unique_ptr<LookupIndex const>()> const& make) {
  LookupIndex const* ready = nullptr;
  if (!claim(key, effort, ready)) {
    return ready;
  }
  std::unique_ptr<LookupIndex const> index;
  try {
    index = make();
  } catch (std::bad_alloc const&) {
    // Without it the answers are the same.
  }
  ready = index.get();
  put(key, effort, std::move(index));
  return ready;
}

bool LookupStore::claim(LookupKey const& key, Effort effort, LookupIndex const*& ready) {
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
    ready = entry.index.get();
    return false;
  }
  bool const pays = ++entry.timesAsked > usesInOneFormula && entry.spared >= effort.price;
  entry.spared += effort.spared;
  if (!pays || memoryFor(effort) > _freeMemory) {
    return false;
  }
  --_countingEntries;
  _freeMemory -= memoryFor(effort);
  entry.state = State::InTheMaking;
  return true;
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
}

void LookupStore::forgetCounts() {
  std::erase_if(_entries, [](auto const& entry) { return entry.second.state == State::Counting; });
  _countingEntries = 0;
}

}  // namespace Zorv::Formulas
