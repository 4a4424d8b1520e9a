#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>

#include <boost/sort/pdqsort/pdqsort.hpp>

#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"

namespace Zorv::ConditionalFormatters {

DistinctNumbers::Block::Block(std::vector<FloatNumber> const& numbers, HashPartitions partitions) {
  std::vector<OrderedKey> keys;
  keys.reserve(numbers.size());
  for (FloatNumber const number : numbers) {
    if (std::isnan(number.get())) {
      _hasNaN = true;
    } else {
      keys.push_back(orderedKeyOf(number.get()));
    }
  }
  _keys = PartitionedEntries(keys, partitions, std::identity());
}

DistinctNumbers::DistinctNumbers(std::vector<Block> const& blocks, HashPartitions partitions,
                                 unsigned threadCount) {
  auto const makeWorker = [&] {
    return [&](std::size_t partition) { return sortPartition(blocks, partition); };
  };
  auto const deliver = [&](std::vector<OrderedKey>& keys) {
    _count += keys.size();
    _partitions.push_back(std::move(keys));
  };
  OrderedTasks(partitions.count(), threadCount, makeWorker, deliver).run();
  if (_count == 0 && std::ranges::any_of(blocks, &Block::_hasNaN)) {
    _count = 1;
    _partitions.clear();
  }
}

std::vector<OrderedKey> DistinctNumbers::sortPartition(std::vector<Block> const& blocks,
                                                       std::size_t partition) {
  std::size_t count = 0;
  for (Block const& block : blocks) {
    count += block._keys.sizeOf(partition);
  }
  std::vector<OrderedKey> keys;
  keys.reserve(count);
  for (Block const& block : blocks) {
    auto const ofBlock = block._keys.at(partition);
    keys.insert(keys.end(), ofBlock.begin(), ofBlock.end());
  }
  // Branchless: comparisons of random keys are mispredicted.
  boost::sort::pdqsort_branchless(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

FloatNumber DistinctNumbers::at(std::size_t rank, RankingOrder order) const noexcept {
  if (_partitions.empty()) {
    return FloatNumber(std::numeric_limits<double>::quiet_NaN());
  }
  std::size_t const wanted = order == RankingOrder::SmallestFirst ? rank : _count - rank + 1;
  OrderedKey lowest = 0;
  OrderedKey highest = std::numeric_limits<OrderedKey>::max();
  while (lowest < highest) {
    OrderedKey const middle = std::midpoint(lowest, highest);
    if (countUpTo(middle) >= wanted) {
      highest = middle;
    } else {
      lowest = middle + 1;
    }
  }
  return FloatNumber(numberOfKey(lowest));
}

std::size_t DistinctNumbers::countUpTo(OrderedKey key) const noexcept {
  std::size_t count = 0;
  for (std::vector<OrderedKey> const& keys : _partitions) {
    count += static_cast<std::size_t>(std::ranges::upper_bound(keys, key) - keys.begin());
  }
  return count;
}

}  // namespace Zorv::ConditionalFormatters
