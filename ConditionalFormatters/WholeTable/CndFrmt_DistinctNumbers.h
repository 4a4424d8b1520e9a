#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "ConditionalFormatters/Operators/CndFrmt_DistinctRanking.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CollectInBands.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

/// The numbers that the existing cells of some ranges hold, each of them once: what rankDistinct()
/// leaves of them, found by several threads.
///
/// Cost: the numbers are sorted in pieces that fit a processor's cache; a rank is found by halving
/// what is left of all numbers, and not by putting the pieces together. Takes up to 16 bytes for
/// each cell while it is made.
class DistinctNumbers {
public:
  /// Throws what the provider throws.
  explicit DistinctNumbers(CollectedRanges const& from);

  [[nodiscard]] std::size_t count() const noexcept { return _count; }

  /// The number of rank `rank`, counted from 1. Requires `0 < rank <= count()`.
  [[nodiscard]] FloatNumber at(std::size_t rank, RankingOrder order) const noexcept;

private:
  /// A number as an integer, so that the two are in the same order.
  using Key = std::uint64_t;

  [[nodiscard]] std::size_t countUpTo(Key key) const noexcept;

  std::size_t _count = 0;
  std::vector<std::vector<Key>> _pieces;  ///< each ascending; of NaNs alone there are none
};

}  // namespace Zorv::ConditionalFormatters
