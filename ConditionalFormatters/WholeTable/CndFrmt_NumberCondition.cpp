#include "ConditionalFormatters/WholeTable/CndFrmt_NumberCondition.h"

#include <cstddef>
#include <utility>
#include <vector>

#include "ConditionalFormatters/Operands/CndFrmt_Mean.h"
#include "ConditionalFormatters/Operands/CndFrmt_Threshold.h"
#include "ConditionalFormatters/Operators/CndFrmt_ValueCollectors.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// Collects the numbers of a row block and reduces them by `reduce(numbers)`.
template <class Reduce>
class NumberSink {
public:
  explicit NumberSink(Reduce const& reduce) noexcept : _reduce(reduce) {}

  void add(DOM::CellInfo const& /*cellInfo*/, FormulaValue value) {
    pushNumber(_numbers, std::move(value));
  }
  [[nodiscard]] std::vector<FloatNumber> finalize() { return _reduce(std::move(_numbers)); }

private:
  Reduce const& _reduce;
  std::vector<FloatNumber> _numbers;
};

MeanOperand findMean(CollectedRanges const& from) {
  auto const keepAll = [](std::vector<FloatNumber> numbers) { return numbers; };
  Mean mean;
  collectFromRanges(
      from, [&] { return NumberSink(keepAll); },
      [&](std::vector<FloatNumber> const& ofBlock) { mean.add(ofBlock); });
  return {mean.get(), mean.getCount()};
}

/// The number of a rank, or the last of the ranking if that is shorter.
ThresholdOperand selectThreshold(CollectedRanges const& from, RankingOrder order,
                                 std::size_t rank) {
  auto const keepBest = [&](std::vector<FloatNumber> const& numbers) {
    return selectBest(numbers, order, rank);
  };
  std::vector<FloatNumber> best;
  collectAtMostTwice(
      from, [&] { return NumberSink(keepBest); },
      [&](std::vector<FloatNumber> const& ofBlock) {
        best.insert(best.end(), ofBlock.begin(), ofBlock.end());
        best = selectBest(best, order, rank);
      });
  return best.empty() ? ThresholdOperand() : ThresholdOperand{best.back(), best.size()};
}

ThresholdOperand rankThreshold(CollectedRanges const& from,
                               DOM::TopBottomConditionalFormatOperator const& record) {
  DistinctNumbers const numbers(from);
  std::size_t const rank = thresholdRank(record, numbers.count());
  return rank == 0 ? ThresholdOperand()
                   : ThresholdOperand{numbers.at(rank, rankingOrderOf(record.getType())), rank};
}

}  // namespace

std::unique_ptr<NumberCondition const> NumberCondition::againstMean(
    DOM::AboveAverageConditionalFormatOperator const& record, CollectedRanges const& from) {
  return std::make_unique<NumberCondition const>(findMeanTest(record), findMean(from));
}

std::unique_ptr<NumberCondition const> NumberCondition::againstThreshold(
    DOM::TopBottomConditionalFormatOperator const& record, CollectedRanges const& from) {
  auto const rank = selectableRank(record);
  return std::make_unique<NumberCondition const>(
      findThresholdTest(record.getType()),
      rank ? selectThreshold(from, rankingOrderOf(record.getType()), *rank)
           : rankThreshold(from, record));
}

// Flattened: GCC leaves boost::get as a call.
[[gnu::flatten]] bool NumberCondition::holds(TestedCell const& cell, PassContext& /*pass*/) const {
  return _reference && testNumber(cell.data.value, _test, *_reference);
}

ConditionOperands NumberCondition::findOperands(TestedCell const& /*cell*/,
                                                PassContext& /*pass*/) const {
  return _operand;
}

}  // namespace Zorv::ConditionalFormatters
