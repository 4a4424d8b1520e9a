#include "ConditionalFormatters/Following/CndFrmt_NumberRanking.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include <boost/sort/pdqsort/pdqsort.hpp>

namespace Zorv::ConditionalFormatters {

namespace {

/// The keys of the numbers that are not NaN, ascending.
std::vector<OrderedKey> sortedKeysOf(std::span<FloatNumber const> numbers) {
  std::vector<OrderedKey> keys;
  keys.reserve(numbers.size());
  for (FloatNumber const number : numbers) {
    if (!std::isnan(number.get())) {
      keys.push_back(orderedKeyOf(number.get()));
    }
  }
  // Branchless: comparisons of random keys are mispredicted.
  boost::sort::pdqsort_branchless(keys.begin(), keys.end());
  return keys;
}

}  // namespace

void NumberRanking::insertMany(std::vector<FloatNumber> const& numbers) {
  auto const keys = sortedKeysOf(numbers);
  _nanCount += numbers.size() - keys.size();

  std::vector<Block> merged;
  auto key = keys.begin();
  for (Block const& block : _blocks) {
    for (std::size_t index = 0; index < block.keys.size(); ++index) {
      OrderedKey const old = block.keys[index];
      for (; key != keys.end() && *key < old; ++key) {
        append(merged, *key, 1);
      }
      append(merged, old, block.counts[index]);
    }
  }
  for (; key != keys.end(); ++key) {
    append(merged, *key, 1);
  }
  _blocks = std::move(merged);
  indexBlocks();
}

void NumberRanking::insert(FloatNumber number) {
  if (std::isnan(number.get())) {
    ++_nanCount;
    return;
  }
  OrderedKey const key = orderedKeyOf(number.get());
  if (_blocks.empty()) {
    append(_blocks, key, 1);
    indexBlocks();
    return;
  }
  std::size_t index = blockOf(key);
  if (_blocks[index].keys.size() == mostInBlock) {
    splitBlock(index);
    index = blockOf(key);
  }
  Block& block = _blocks[index];
  std::size_t const before = block.keys.size();
  adjust(block, {key, 1});
  _distinct += block.keys.size() - before;
  _firstKeys[index] = block.keys.front();
}

void NumberRanking::erase(FloatNumber number) {
  if (std::isnan(number.get())) {
    --_nanCount;
    return;
  }
  OrderedKey const key = orderedKeyOf(number.get());
  std::size_t const index = blockOf(key);
  Block& block = _blocks[index];
  std::size_t const before = block.keys.size();
  adjust(block, {key, -1});
  _distinct -= before - block.keys.size();
  if (block.keys.empty()) {
    _blocks.erase(_blocks.begin() + static_cast<std::ptrdiff_t>(index));
    _firstKeys.erase(_firstKeys.begin() + static_cast<std::ptrdiff_t>(index));
  } else {
    _firstKeys[index] = block.keys.front();
  }
}

void NumberRanking::change(std::span<FloatNumber const> inserted,
                           std::span<FloatNumber const> erased) {
  // So few take less time one by one, among a million.
  constexpr std::size_t few = 2'000;
  if (inserted.size() + erased.size() <= few) {
    std::ranges::for_each(inserted, [this](FloatNumber number) { insert(number); });
    std::ranges::for_each(erased, [this](FloatNumber number) { erase(number); });
    return;
  }
  auto const added = sortedKeysOf(inserted);
  auto const removed = sortedKeysOf(erased);
  _nanCount += inserted.size() - added.size();
  _nanCount -= erased.size() - removed.size();
  changeMany(listChanges(added, removed));
}

std::vector<NumberRanking::Change> NumberRanking::listChanges(std::span<OrderedKey const> inserted,
                                                              std::span<OrderedKey const> erased) {
  std::vector<Change> changes;
  changes.reserve(inserted.size() + erased.size());
  auto more = inserted.begin();
  auto fewer = erased.begin();
  while (more != inserted.end() || fewer != erased.end()) {
    bool const isMore = fewer == erased.end() || (more != inserted.end() && *more <= *fewer);
    Change change{isMore ? *more : *fewer, 0};
    for (; more != inserted.end() && *more == change.key; ++more) {
      ++change.count;
    }
    for (; fewer != erased.end() && *fewer == change.key; ++fewer) {
      --change.count;
    }
    if (change.count != 0) {
      changes.push_back(change);
    }
  }
  return changes;
}

void NumberRanking::changeMany(std::span<Change const> changes) {
  if (changes.empty()) {
    return;
  }
  if (_blocks.empty()) {
    _blocks.emplace_back();
    _firstKeys.push_back(changes.front().key);
  }
  std::vector<Block> blocks;
  std::vector<OrderedKey> firstKeys;
  blocks.reserve(_blocks.size());
  firstKeys.reserve(_blocks.size());
  Block merged;
  auto change = changes.begin();
  for (std::size_t index = 0; index < _blocks.size(); ++index) {
    auto const first = change;
    bool const isLast = index + 1 == _blocks.size();
    while (change != changes.end() && (isLast || change->key < _firstKeys[index + 1])) {
      ++change;
    }
    if (first == change) {
      blocks.push_back(std::move(_blocks[index]));
      firstKeys.push_back(_firstKeys[index]);
      continue;
    }
    appendChanged(_blocks[index], {first, change}, merged, blocks);
    while (firstKeys.size() < blocks.size()) {
      firstKeys.push_back(blocks[firstKeys.size()].keys.front());
    }
  }
  _blocks = std::move(blocks);
  _firstKeys = std::move(firstKeys);
  _distinct = 0;
  for (Block const& block : _blocks) {
    _distinct += block.keys.size();
  }
}

void NumberRanking::appendChanged(Block& block, std::span<Change const> changes, Block& merged,
                                  std::vector<Block>& blocks) {
  // So few take less time one by one than a copy of the block.
  constexpr std::size_t few = 8;
  bool const hasRoom =
      block.keys.size() > changes.size() && block.keys.size() + changes.size() <= mostInBlock;
  if (changes.size() <= few && hasRoom) {
    std::ranges::for_each(changes, [&](Change const& change) { adjust(block, change); });
    blocks.push_back(std::move(block));
  } else {
    merge(block, changes, merged);
    appendMerged(merged, block, blocks);
  }
}

void NumberRanking::adjust(Block& block, Change const& change) {
  auto const place = std::ranges::lower_bound(block.keys, change.key);
  auto const count = block.counts.begin() + (place - block.keys.begin());
  block.total += static_cast<std::size_t>(change.count);
  if (place == block.keys.end() || *place != change.key) {
    block.counts.insert(count, static_cast<std::uint32_t>(change.count));
    block.keys.insert(place, change.key);
    return;
  }
  *count += static_cast<std::uint32_t>(change.count);
  if (*count == 0) {
    block.counts.erase(count);
    block.keys.erase(place);
  }
}

void NumberRanking::merge(Block const& block, std::span<Change const> changes, Block& merged) {
  merged.keys.clear();
  merged.counts.clear();
  auto key = block.keys.begin();
  auto count = block.counts.begin();
  auto const keepUntil = [&](auto end) {
    auto const endOfCounts = count + (end - key);
    merged.keys.insert(merged.keys.end(), key, end);
    merged.counts.insert(merged.counts.end(), count, endOfCounts);
    key = end;
    count = endOfCounts;
  };
  for (Change const& change : changes) {
    keepUntil(
        std::find_if(key, block.keys.end(), [&](OrderedKey each) { return each >= change.key; }));
    std::int64_t now = change.count;
    if (key != block.keys.end() && *key == change.key) {
      now += *count;
      ++key;
      ++count;
    }
    if (now > 0) {
      merged.keys.push_back(change.key);
      merged.counts.push_back(static_cast<std::uint32_t>(now));
    }
  }
  keepUntil(block.keys.end());
}

void NumberRanking::appendMerged(Block const& merged, Block& before, std::vector<Block>& blocks) {
  std::size_t const size = merged.keys.size();
  std::size_t const parts = (size + mostInBlock - 1) / mostInBlock;
  for (std::size_t part = 0; part < parts; ++part) {
    auto const first = static_cast<std::ptrdiff_t>(size * part / parts);
    auto const end = static_cast<std::ptrdiff_t>(size * (part + 1) / parts);
    Block& block = blocks.emplace_back(part == 0 ? std::move(before) : Block());
    block.keys.assign(merged.keys.begin() + first, merged.keys.begin() + end);
    block.counts.assign(merged.counts.begin() + first, merged.counts.begin() + end);
    block.total = std::accumulate(block.counts.begin(), block.counts.end(), std::size_t{0});
  }
}

FloatNumber NumberRanking::at(std::size_t rank, RankingOrder order) const noexcept {
  if (_distinct == 0) {
    return FloatNumber(std::numeric_limits<double>::quiet_NaN());
  }
  std::size_t left = order == RankingOrder::SmallestFirst ? rank - 1 : _distinct - rank;
  std::size_t block = 0;
  for (; left >= _blocks[block].keys.size(); ++block) {
    left -= _blocks[block].keys.size();
  }
  return FloatNumber(numberOfKey(_blocks[block].keys[left]));
}

void NumberRanking::indexCounts() {
  _ends.clear();
  std::size_t end = 0;
  for (Block const& block : _blocks) {
    end += block.total;
    _ends.push_back(end);
  }
}

FloatNumber NumberRanking::atIndex(std::size_t index) const noexcept {
  auto const end = std::ranges::upper_bound(_ends, index);
  Block const& block = _blocks[static_cast<std::size_t>(end - _ends.begin())];
  std::size_t left = index - (*end - block.total);
  std::size_t key = 0;
  for (; left >= block.counts[key]; ++key) {
    left -= block.counts[key];
  }
  return FloatNumber(numberOfKey(block.keys[key]));
}

NumberRanking::Counts NumberRanking::countAround(FloatNumber number) const noexcept {
  if (_blocks.empty()) {
    return {};
  }
  OrderedKey const key = orderedKeyOf(number.get());
  std::size_t const index = blockOf(key);
  Block const& block = _blocks[index];
  auto const place = std::ranges::lower_bound(block.keys, key);
  auto const count = block.counts.begin() + (place - block.keys.begin());
  std::size_t const below =
      std::accumulate(block.counts.begin(), count, _ends[index] - block.total);
  std::size_t const equal = place != block.keys.end() && *place == key ? *count : 0;
  return {below, equal, countAll() - below - equal};
}

std::size_t NumberRanking::countBytes() const noexcept {
  std::size_t bytes = _blocks.capacity() * sizeof(Block) +
                      _firstKeys.capacity() * sizeof(OrderedKey) +
                      _ends.capacity() * sizeof(std::size_t);
  for (Block const& block : _blocks) {
    bytes += block.keys.capacity() * sizeof(OrderedKey) +
             block.counts.capacity() * sizeof(std::uint32_t);
  }
  return bytes;
}

void NumberRanking::append(std::vector<Block>& blocks, OrderedKey key, std::uint32_t count) {
  if (!blocks.empty() && blocks.back().keys.back() == key) {
    blocks.back().counts.back() += count;
    blocks.back().total += count;
    return;
  }
  if (blocks.empty() || blocks.back().keys.size() == mostInBlock) {
    Block& block = blocks.emplace_back();
    block.keys.reserve(mostInBlock);
    block.counts.reserve(mostInBlock);
  }
  blocks.back().keys.push_back(key);
  blocks.back().counts.push_back(count);
  blocks.back().total += count;
}

std::size_t NumberRanking::blockOf(OrderedKey key) const noexcept {
  auto const next = std::ranges::upper_bound(_firstKeys, key);
  return static_cast<std::size_t>(std::max<std::ptrdiff_t>(next - _firstKeys.begin(), 1) - 1);
}

void NumberRanking::splitBlock(std::size_t block) {
  Block upper;
  Block& lower = _blocks[block];
  auto const half = static_cast<std::ptrdiff_t>(lower.keys.size() / 2);
  upper.keys.assign(lower.keys.begin() + half, lower.keys.end());
  upper.counts.assign(lower.counts.begin() + half, lower.counts.end());
  lower.keys.erase(lower.keys.begin() + half, lower.keys.end());
  lower.counts.erase(lower.counts.begin() + half, lower.counts.end());
  upper.total = std::accumulate(upper.counts.begin(), upper.counts.end(), std::size_t{0});
  lower.total -= upper.total;
  auto const next = static_cast<std::ptrdiff_t>(block + 1);
  _firstKeys.insert(_firstKeys.begin() + next, upper.keys.front());
  _blocks.insert(_blocks.begin() + next, std::move(upper));
}

void NumberRanking::indexBlocks() {
  _firstKeys.clear();
  _distinct = 0;
  for (Block const& block : _blocks) {
    _firstKeys.push_back(block.keys.front());
    _distinct += block.keys.size();
  }
}

}  // namespace Zorv::ConditionalFormatters
