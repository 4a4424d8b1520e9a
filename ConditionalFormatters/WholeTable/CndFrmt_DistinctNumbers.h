#pragma once

#include <cstddef>
#include <vector>

#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"
#include "ConditionalFormatters/Operands/CndFrmt_OrderedKey.h"
#include "Utils/FloatNumber.h"
#include "Utils/HashPartitions.h"

namespace Zorv::ConditionalFormatters {

/// Order-statistic index of distinct numbers: the result of rankDistinct(), made by several
/// threads.
///
/// The numbers are sorted in hash partitions that fit a processor's cache. A rank is found by
/// bisection over all possible numbers, so the partitions are never merged. Needs up to 16 bytes
/// for each number while it is made.
class DistinctNumbers {
public:
  /// The numbers of one row block, by partition.
  class Block {
  public:
    Block() = default;
    Block(std::vector<FloatNumber> const& numbers, HashPartitions partitions);

  private:
    friend class DistinctNumbers;

    PartitionedEntries<OrderedKey> _keys;
    bool _hasNaN = false;
  };

  /// From blocks in any order, all made with these partitions.
  DistinctNumbers(std::vector<Block> const& blocks, HashPartitions partitions,
                  unsigned threadCount);

  [[nodiscard]] std::size_t count() const noexcept { return _count; }

  /// The number at a rank, counted from 1. Requires `0 < rank <= count()`.
  [[nodiscard]] FloatNumber at(std::size_t rank, RankingOrder order) const noexcept;

private:
  /// The keys of one partition of all blocks, sorted and without repeated ones.
  [[nodiscard]] static std::vector<OrderedKey> sortPartition(std::vector<Block> const& blocks,
                                                             std::size_t partition);
  [[nodiscard]] std::size_t countUpTo(OrderedKey key) const noexcept;

  std::size_t _count = 0;
  std::vector<std::vector<OrderedKey>> _partitions;  ///< each ascending; none if all are NaN
};

}  // namespace Zorv::ConditionalFormatters
