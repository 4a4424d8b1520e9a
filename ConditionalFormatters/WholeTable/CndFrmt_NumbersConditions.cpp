#include "ConditionalFormatters/WholeTable/CndFrmt_NumbersConditions.h"

#include <cstddef>
#include <memory>
#include <numeric>
#include <utility>
#include <vector>

#include <boost/optional.hpp>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/CndFrmt_ValueCollectors.h"
#include "ConditionalFormatters/Operators/CndFrmt_AboveAverageOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TopBottomOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_TopBottomRank.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CollectInBands.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"
#include "DOM/ConditionalFormat.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Utils/FloatNumber.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Gives what `reduce(numbers)` leaves of a band's numbers.
template <class Reduce>
class CollectNumbers {
public:
  explicit CollectNumbers(Reduce const& reduce) noexcept : _reduce(reduce) {}

  void add(DOM::CellInfo const& /*cellInfo*/, FormulaValue value) {
    pushNumber(_numbers, std::move(value));
  }
  [[nodiscard]] std::vector<FloatNumber> finish() { return _reduce(std::move(_numbers)); }

private:
  Reduce const& _reduce;
  std::vector<FloatNumber> _numbers;
};

FloatNumber findMean(CollectedRanges const& from) {
  auto const keepAll = [](std::vector<FloatNumber> numbers) { return numbers; };
  FloatNumber sum(0.0);
  std::size_t count = 0;
  collectInBands(
      from, [&] { return CollectNumbers(keepAll); },
      [&](std::vector<FloatNumber> const& ofBand) {
        // In the order of the cells: the rounding depends on it.
        sum = std::accumulate(ofBand.begin(), ofBand.end(), sum);
        count += ofBand.size();
      });
  return sum / FloatNumber(static_cast<double>(count));
}

/// The number of a rank, or the last in the ranking when that is shorter.
boost::optional<FloatNumber> selectThreshold(CollectedRanges const& from, RankingOrder order,
                                             std::size_t rank) {
  auto const keepBest = [&](std::vector<FloatNumber> const& numbers) {
    return selectBest(numbers, order, rank);
  };
  std::vector<FloatNumber> best;
  collectInBands(
      from, [&] { return CollectNumbers(keepBest); },
      [&](std::vector<FloatNumber> const& ofBand) {
        best.insert(best.end(), ofBand.begin(), ofBand.end());
        best = selectBest(best, order, rank);
      });
  return best.empty() ? boost::none : boost::make_optional(best.back());
}

boost::optional<FloatNumber> rankThreshold(CollectedRanges const& from,
                                           DOM::TopBottomConditionalFormatOperator const& record) {
  DistinctNumbers const numbers(from);
  std::size_t const rank = thresholdRank(record, numbers.count());
  return rank == 0 ? boost::none
                   : boost::make_optional(numbers.at(rank, rankingOrderOf(record.getType())));
}

}  // namespace

void AverageCondition::make(unsigned threadCount) const {
  auto const& record =
      boost::get<DOM::AboveAverageConditionalFormatOperator>(_formatRef.second.get().getOperator());
  FloatNumber const mean =
      findMean({_sources.provider, _sources.table, _formatRef.first, threadCount});
  // The mean of the mean alone is the same.
  _operator = std::make_unique<AboveAverageOperator>(record, std::vector{mean});
}

void TopBottomCondition::make(unsigned threadCount) const {
  auto const& record =
      boost::get<DOM::TopBottomConditionalFormatOperator>(_formatRef.second.get().getOperator());
  CollectedRanges const from{_sources.provider, _sources.table, _formatRef.first, threadCount};
  auto const rank = selectableRank(record);
  auto const threshold = rank ? selectThreshold(from, rankingOrderOf(record.getType()), *rank)
                              : rankThreshold(from, record);
  // Alone the threshold is the first of its ranking, and parts all numbers alike.
  DOM::TopBottomConditionalFormatOperator const first(record.getType(), 1, false);
  _operator = std::make_unique<TopBottomOperator>(
      first, threshold ? std::vector{*threshold} : std::vector<FloatNumber>());
}

}  // namespace Zorv::ConditionalFormatters
