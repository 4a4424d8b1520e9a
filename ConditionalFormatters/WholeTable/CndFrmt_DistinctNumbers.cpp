#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <functional>
#include <limits>
#include <numeric>
#include <utility>

#include <boost/sort/pdqsort/pdqsort.hpp>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Parallel/CndFrmt_OrderedTasks.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/HashPartitions.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr std::uint64_t signBit = std::uint64_t{1} << 63U;

/// The bits of positive doubles ascend with the value; those of negative ones descend.
std::uint64_t keyOf(double number) noexcept {
  // The two zeros are equal but have different bits.
  auto const bits = std::bit_cast<std::uint64_t>(number == 0.0 ? 0.0 : number);
  return (bits & signBit) != 0 ? ~bits : bits | signBit;
}

double numberOf(std::uint64_t key) noexcept {
  return std::bit_cast<double>((key & signBit) != 0 ? key ^ signBit : ~key);
}

struct BlockNumbers {
  PartitionedEntries<std::uint64_t> keys;
  bool hasNaN = false;
};

class BlockSink {
public:
  explicit BlockSink(HashPartitions partitions) noexcept : _partitions(partitions) {}

  void add(DOM::CellInfo const& /*cellInfo*/, FormulaValue const& value) {
    if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value)) {
      if (std::isnan(number->value.get())) {
        _hasNaN = true;
      } else {
        _keys.push_back(keyOf(number->value.get()));
      }
    }
  }
  [[nodiscard]] BlockNumbers finalize() const {
    return {PartitionedEntries(_keys, _partitions, std::identity()), _hasNaN};
  }

private:
  HashPartitions _partitions;
  std::vector<std::uint64_t> _keys;
  bool _hasNaN = false;
};

/// The keys of one partition of all blocks, sorted and without repeated ones.
std::vector<std::uint64_t> sortPartition(std::vector<BlockNumbers> const& blocks,
                                         std::size_t partition) {
  std::vector<std::uint64_t> keys;
  for (BlockNumbers const& block : blocks) {
    auto const ofBlock = block.keys.at(partition);
    keys.insert(keys.end(), ofBlock.begin(), ofBlock.end());
  }
  // Branchless: comparisons of random keys are mispredicted.
  boost::sort::pdqsort_branchless(keys.begin(), keys.end());
  keys.erase(std::unique(keys.begin(), keys.end()), keys.end());
  return keys;
}

}  // namespace

DistinctNumbers::DistinctNumbers(CollectedRanges const& from) {
  HashPartitions const partitions(from.table.getCellCount());
  std::vector<BlockNumbers> blocks;
  bool hasNaN = false;
  collectAtMostTwice(
      from, [&] { return BlockSink(partitions); },
      [&](BlockNumbers& block) {
        hasNaN = hasNaN || block.hasNaN;
        blocks.push_back(std::move(block));
      });

  auto const makeWorker = [&] {
    return [&](std::size_t partition) { return sortPartition(blocks, partition); };
  };
  auto const deliver = [&](std::vector<Key>& keys) {
    _count += keys.size();
    _partitions.push_back(std::move(keys));
  };
  OrderedTasks(partitions.count(), from.resources.threadCount, makeWorker, deliver).run();
  if (_count == 0 && hasNaN) {
    _count = 1;
    _partitions.clear();
  }
}

FloatNumber DistinctNumbers::at(std::size_t rank, RankingOrder order) const noexcept {
  if (_partitions.empty()) {
    return FloatNumber(std::numeric_limits<double>::quiet_NaN());
  }
  std::size_t const wanted = order == RankingOrder::SmallestFirst ? rank : _count - rank + 1;
  Key lowest = 0;
  Key highest = std::numeric_limits<Key>::max();
  while (lowest < highest) {
    Key const middle = std::midpoint(lowest, highest);
    if (countUpTo(middle) >= wanted) {
      highest = middle;
    } else {
      lowest = middle + 1;
    }
  }
  return FloatNumber(numberOf(lowest));
}

std::size_t DistinctNumbers::countUpTo(Key key) const noexcept {
  std::size_t count = 0;
  for (std::vector<Key> const& keys : _partitions) {
    count += static_cast<std::size_t>(std::ranges::upper_bound(keys, key) - keys.begin());
  }
  return count;
}

}  // namespace Zorv::ConditionalFormatters
