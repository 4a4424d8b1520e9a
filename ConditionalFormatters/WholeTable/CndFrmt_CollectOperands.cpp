#include "ConditionalFormatters/WholeTable/CndFrmt_CollectOperands.h"

#include <cstddef>
#include <utility>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operands/CndFrmt_DistinctRanking.h"
#include "ConditionalFormatters/Operands/CndFrmt_Mean.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OccurrenceBlock.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_RepeatedCells.h"
#include "Utils/HashPartitions.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// How the values of a row block are collected.
struct OperandPlan {
  OperandNeeds needs;
  WatchedValues const* watched;
  HashPartitions partitions;
};

/// Operands that a row block gives.
struct BlockOperands {
  std::vector<FloatNumber> numbers;  ///< in their order, for the mean
  std::vector<FloatNumber> largest;
  std::vector<FloatNumber> smallest;
  DistinctNumbers::Block ranking;
  std::vector<WatchedValues::Index> watched;  ///< one for each cell with a watched value
  OccurrenceBlock values;
};

class OperandSink {
public:
  explicit OperandSink(OperandPlan const& plan)
      : _plan(plan), _needsNumbers(plan.needs.includeNumbers()), _occurrences(plan.partitions) {}

  void add(DOM::CellInfo const& cellInfo, FormulaValue&& value) {
    if (_needsNumbers) {
      addNumber(value);
    }
    if (_plan.watched != nullptr) {
      addWatched(value);
    }
    if (_plan.needs.occurrences) {
      _occurrences.add(cellInfo, std::move(value));
    }
  }

  [[nodiscard]] BlockOperands finalize() {
    auto const& needs = _plan.needs;
    auto const& numbers = _block.numbers;
    if (needs.largest > 0) {
      _block.largest = selectBest(numbers, RankingOrder::LargestFirst, needs.largest);
    }
    if (needs.smallest > 0) {
      _block.smallest = selectBest(numbers, RankingOrder::SmallestFirst, needs.smallest);
    }
    if (needs.ranking) {
      _block.ranking = DistinctNumbers::Block(numbers, _plan.partitions);
    }
    if (needs.occurrences) {
      _block.values = _occurrences.finalize();
    }
    return std::move(_block);
  }

private:
  void addNumber(FormulaValue const& value) {
    if (auto const* const number = boost::get<FormulaModel::FormulaNumber>(&value)) {
      _block.numbers.push_back(number->value);
    }
  }

  void addWatched(FormulaValue const& value) {
    auto const index = _plan.watched->find(value);
    if (index != WatchedValues::none) {
      _block.watched.push_back(index);
    }
  }

  OperandPlan const& _plan;
  bool _needsNumbers;
  BlockOperands _block;
  OccurrenceBlockBuilder _occurrences;
};

/// Combines what the blocks give, in their order.
class OperandCombiner {
public:
  OperandCombiner(OperandPlan const& plan, CollectedOperands& result)
      : _plan(plan), _result(result) {
    _result.watchedCounts.resize(plan.watched == nullptr ? 0 : plan.watched->size());
  }

  void add(BlockOperands& block) {
    auto const& needs = _plan.needs;
    if (needs.mean) {
      _mean.add(block.numbers);
    }
    mergeBest(_result.largest, block.largest, RankingOrder::LargestFirst, needs.largest);
    mergeBest(_result.smallest, block.smallest, RankingOrder::SmallestFirst, needs.smallest);
    if (needs.ranking) {
      _ranking.push_back(std::move(block.ranking));
    }
    if (needs.occurrences) {
      _values.push_back(std::move(block.values));
    }
    for (auto const index : block.watched) {
      ++_result.watchedCounts[index];
    }
  }

  void finish(unsigned threadCount) {
    auto const& needs = _plan.needs;
    if (needs.mean) {
      _result.mean = {_mean.get(), _mean.getCount()};
    }
    if (needs.ranking) {
      _result.ranking =
          std::make_unique<DistinctNumbers const>(_ranking, _plan.partitions, threadCount);
    }
    if (needs.occurrences) {
      _result.repeated = std::make_unique<CellSet const>(
          findRepeatedCells(std::move(_values), _plan.partitions, threadCount));
    }
  }

private:
  static void mergeBest(std::vector<FloatNumber>& best, std::vector<FloatNumber> const& ofBlock,
                        RankingOrder order, std::size_t count) {
    if (!ofBlock.empty()) {
      best.insert(best.end(), ofBlock.begin(), ofBlock.end());
      best = selectBest(best, order, count);
    }
  }

  OperandPlan const& _plan;
  CollectedOperands& _result;
  Mean _mean;
  std::vector<DistinctNumbers::Block> _ranking;
  std::vector<OccurrenceBlock> _values;
};

enum class Repeats : bool { Kept, AtMostTwo };

/// One walk over the cells. A cell of several ranges is met once for each, or at most twice.
void walkForOperands(CollectedRanges const& from, OperandPlan const& plan, Repeats repeats,
                     CollectedOperands& result) {
  OperandCombiner combiner(plan, result);
  auto const makeSink = [&] { return OperandSink(plan); };
  auto const combine = [&](BlockOperands& block) { combiner.add(block); };
  if (repeats == Repeats::Kept) {
    collectFromRanges(from, makeSink, combine);
  } else {
    collectAtMostTwice(from, makeSink, combine);
  }
  combiner.finish(from.resources.threadCount);
}

}  // namespace

CollectedOperands collectOperands(CollectedRanges const& from, OperandNeeds const& needs,
                                  WatchedValues const* watched) {
  CollectedOperands result;
  OperandPlan plan{needs, watched, HashPartitions(from.table.getCellCount())};
  // A mean counts a cell of several ranges for each of them, in their order.
  if (needs.mean && overlapMuch(from.ranges)) {
    walkForOperands(from, {{.mean = true}, nullptr, plan.partitions}, Repeats::Kept, result);
    plan.needs.mean = false;
  }
  if (!plan.needs.isEmpty() || watched != nullptr) {
    walkForOperands(from, plan, plan.needs.mean ? Repeats::Kept : Repeats::AtMostTwo, result);
  }
  return result;
}

}  // namespace Zorv::ConditionalFormatters
