#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"
#include "ConditionalFormatters/Parallel/CndFrmt_CollectFromRanges.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// Order-statistic index of the distinct numbers in some ranges: the result of rankDistinct(), made
/// by several threads.
///
/// The numbers are sorted in hash partitions that fit a processor's cache. A rank is found by
/// bisection over all possible numbers, so the partitions are never merged. Needs up to 16 bytes
/// for each cell while it is made.
class DistinctNumbers {
public:
  /// Throws what the provider throws.
  explicit DistinctNumbers(CollectedRanges const& from);

  [[nodiscard]] std::size_t count() const noexcept { return _count; }

  /// The number at a rank, counted from 1. Requires `0 < rank <= count()`.
  [[nodiscard]] FloatNumber at(std::size_t rank, RankingOrder order) const noexcept;

private:
  /// A number as an integer that has the same order.
  using Key = std::uint64_t;

  [[nodiscard]] std::size_t countUpTo(Key key) const noexcept;

  std::size_t _count = 0;
  std::vector<std::vector<Key>> _partitions;  ///< each ascending; none if all are NaN
};

}  // namespace Zorv::ConditionalFormatters
