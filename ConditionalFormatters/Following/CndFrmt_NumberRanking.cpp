#include "ConditionalFormatters/Following/CndFrmt_NumberRanking.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <utility>

#include <boost/sort/pdqsort/pdqsort.hpp>

namespace Zorv::ConditionalFormatters {

void NumberRanking::insertMany(std::vector<FloatNumber> const& numbers) {
  std::vector<OrderedKey> keys;
  keys.reserve(numbers.size());
  for (FloatNumber const number : numbers) {
    if (std::isnan(number.get())) {
      ++_nanCount;
    } else {
      keys.push_back(orderedKeyOf(number.get()));
    }
  }
  // Branchless: comparisons of random keys are mispredicted.
  boost::sort::pdqsort_branchless(keys.begin(), keys.end());

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
  ++block.total;
  auto const place = std::ranges::lower_bound(block.keys, key);
  auto const offset = place - block.keys.begin();
  if (place != block.keys.end() && *place == key) {
    ++block.counts[static_cast<std::size_t>(offset)];
    return;
  }
  block.keys.insert(place, key);
  block.counts.insert(block.counts.begin() + offset, 1);
  _firstKeys[index] = block.keys.front();
  ++_distinct;
}

void NumberRanking::erase(FloatNumber number) {
  if (std::isnan(number.get())) {
    --_nanCount;
    return;
  }
  OrderedKey const key = orderedKeyOf(number.get());
  std::size_t const index = blockOf(key);
  Block& block = _blocks[index];
  --block.total;
  auto const place = std::ranges::lower_bound(block.keys, key);
  auto const count = block.counts.begin() + (place - block.keys.begin());
  if (--*count > 0) {
    return;
  }
  block.counts.erase(count);
  block.keys.erase(place);
  --_distinct;
  if (block.keys.empty()) {
    _blocks.erase(_blocks.begin() + static_cast<std::ptrdiff_t>(index));
    _firstKeys.erase(_firstKeys.begin() + static_cast<std::ptrdiff_t>(index));
  } else {
    _firstKeys[index] = block.keys.front();
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
