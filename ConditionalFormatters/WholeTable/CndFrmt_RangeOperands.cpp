#include "ConditionalFormatters/WholeTable/CndFrmt_RangeOperands.h"

#include <algorithm>
#include <memory>
#include <tuple>
#include <utility>

#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operands/CndFrmt_Threshold.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_DistinctNumbers.h"

namespace Zorv::ConditionalFormatters {

namespace {

/// The number of a rank among the best ones, or the last of them if there are fewer.
ThresholdOperand thresholdAmongBest(std::vector<FloatNumber> const& best, std::size_t rank) {
  std::size_t const last = std::min(rank, best.size());
  return last == 0 ? ThresholdOperand() : ThresholdOperand{best[last - 1], last};
}

ThresholdOperand thresholdInRanking(DistinctNumbers const& numbers,
                                    DOM::TopBottomConditionalFormatOperator const& record) {
  std::size_t const rank = thresholdRank(record, numbers.count());
  return rank == 0 ? ThresholdOperand()
                   : ThresholdOperand{numbers.at(rank, rankingOrderOf(record.getType())), rank};
}

bool containsCell(CellSet const& cells, CellIndex cell) noexcept {
  return cells.contains(cell.getRow().get(), cell.getColumn().get());
}

}  // namespace

bool RangeOperands::ByRank::operator()(RankedRecord const& a, RankedRecord const& b) const {
  auto const keyOf = [](RankedRecord const& record) {
    return std::make_tuple(record.getType(), record.getValue(), record.getUsePercent());
  };
  return keyOf(a) < keyOf(b);
}

void RangeOperands::addFormat(DOM::ConditionalFormatOperator const& record) {
  OperandNeeds const needs = findOperandNeeds(record);
  _needs |= needs;
  if (needs.ranking) {
    _ranked.insert(boost::get<RankedRecord>(record));
  }
}

MeanOperand RangeOperands::getMean(PassRequest const& request) const {
  if (auto const* const followed = findFollowed()) {
    return followed->getMean();
  }
  collect({.mean = true}, request);
  return *_mean.find();
}

ThresholdOperand RangeOperands::getThreshold(DOM::TopBottomConditionalFormatOperator const& record,
                                             PassRequest const& request) const {
  if (auto const* const followed = findFollowed()) {
    return followed->getThreshold(record);
  }
  auto const rank = selectableRank(record);
  if (!rank) {
    collect({.ranking = true}, request);
    return _thresholds.find()->at(record);
  }
  bool const isTop = rankingOrderOf(record.getType()) == RankingOrder::LargestFirst;
  collect(isTop ? OperandNeeds{.largest = *rank} : OperandNeeds{.smallest = *rank}, request);
  return thresholdAmongBest(isTop ? *_largest.find() : *_smallest.find(), *rank);
}

void RangeOperands::prepareOccurrences(PassRequest const& request) const {
  if (findFollowed() == nullptr && _repeatedAmongWatched.find() == nullptr) {
    collect({.occurrences = true}, request);
  }
}

bool RangeOperands::findIfRepeated(CellIndex cell, PassResources const& resources) const {
  if (auto const* const followed = findFollowed()) {
    return followed->isRepeated(cell);
  }
  auto const* const few = _repeatedAmongWatched.find();
  if (few != nullptr && containsCell(few->known, cell)) {
    return containsCell(few->repeated, cell);
  }
  collect({.occurrences = true}, {.resources = resources, .asksOneFormat = true});
  return containsCell(*_repeated.find(), cell);
}

bool RangeOperands::prepareUntil(FollowedOperands::Clock::time_point end) {
  if (_cannotFollow || findFollowed() != nullptr) {
    return false;
  }
  // Each range has a value for each of its cells: ranges that overlap much would take much memory.
  if (!_followed && overlapMuch(_ranges)) {
    _cannotFollow = true;
    return false;
  }
  if (!_followed) {
    _followed = std::make_unique<FollowedOperands>(_provider, _table, _ranges, _needs, _aspects);
  }
  try {
    _followed->prepareUntil(end);
  } catch (...) {
    _followed.reset();
    throw;
  }
  dropHopeless();
  if (findFollowed() != nullptr) {
    forgetCollected();
    return false;
  }
  return !_cannotFollow;
}

RangeOperands::Change RangeOperands::valuesChanged(std::span<TableRange const> areas) {
  forgetCollected();
  if (_followed && !_followed->isWorthFollowing(areas)) {
    _followed.reset();
  }
  if (!_followed) {
    return {.isFollowed = false, .flipped = {}};
  }
  auto flipped = _followed->valuesChanged(areas);
  dropHopeless();
  return {.isFollowed = findFollowed() != nullptr, .flipped = std::move(flipped)};
}

void RangeOperands::takeOver(RangeOperands& others, SheetMoves const* moves) {
  if (!others._followed || !others._followed->serves(_needs, _aspects)) {
    return;
  }
  auto followed = std::move(others._followed);
  if (moves == nullptr || followed->linesChanged(*moves, _ranges)) {
    forgetCollected();
    _followed = std::move(followed);
    dropHopeless();
  }
}

void RangeOperands::linesChanged(SheetMoves const& moves) {
  forgetCollected();
  if (_followed && !_followed->linesChanged(moves, _ranges)) {
    _followed.reset();
  }
  dropHopeless();
}

void RangeOperands::forget() noexcept {
  forgetCollected();
  _followed.reset();
}

void RangeOperands::dropHopeless() noexcept {
  if (_followed && _followed->isHopeless()) {
    stopFollowing();
  }
}

void RangeOperands::forgetCollected() noexcept {
  _mean.reset();
  _largest.reset();
  _smallest.reset();
  _thresholds.reset();
  _repeatedAmongWatched.reset();
  _repeated.reset();
}

OperandNeeds RangeOperands::findMissing(OperandNeeds needs) const noexcept {
  needs.mean = needs.mean && _mean.find() == nullptr;
  // The best numbers are collected once for the longest of the lists.
  needs.largest = needs.largest > 0 && _largest.find() == nullptr ? _needs.largest : 0;
  needs.smallest = needs.smallest > 0 && _smallest.find() == nullptr ? _needs.smallest : 0;
  needs.ranking = needs.ranking && _thresholds.find() == nullptr;
  needs.occurrences = needs.occurrences && _repeated.find() == nullptr;
  return needs;
}

OperandNeeds RangeOperands::findWorth(OperandNeeds const& needs,
                                      bool asksOneFormat) const noexcept {
  OperandNeeds missing = findMissing(needs);
  if (!asksOneFormat && !missing.isEmpty()) {
    OperandNeeds others = findMissing(_needs);
    others.occurrences = others.occurrences && _repeatedAmongWatched.find() == nullptr;
    missing |= others;
  }
  return missing;
}

void RangeOperands::collect(OperandNeeds const& needs, PassRequest const& request) const {
  if (findMissing(needs).isEmpty()) {
    return;
  }
  std::lock_guard const lock(_collecting);
  OperandNeeds worth = findWorth(needs, request.asksOneFormat);
  if (worth.isEmpty()) {
    return;
  }
  std::unique_ptr<WatchedCells const> watched;
  if (worth.occurrences && _repeatedAmongWatched.find() == nullptr) {
    watched = WatchedCells::find(_provider, _table, _ranges, request.areas);
    worth.occurrences = watched == nullptr;
  }
  auto collected = collectOperands({_provider, _table, _ranges, request.resources}, worth,
                                   watched == nullptr ? nullptr : &watched->getValues());
  if (watched != nullptr) {
    _repeatedAmongWatched.keepFirst(std::make_unique<RepeatedAmongWatched const>(
        watched->findRepeated(collected.watchedCounts)));
  }
  keep(std::move(collected), worth);
}

void RangeOperands::keep(CollectedOperands collected, OperandNeeds const& needs) const {
  if (needs.mean) {
    _mean.keepFirst(std::make_unique<MeanOperand const>(collected.mean));
  }
  if (needs.largest > 0) {
    _largest.keepFirst(
        std::make_unique<std::vector<FloatNumber> const>(std::move(collected.largest)));
  }
  if (needs.smallest > 0) {
    _smallest.keepFirst(
        std::make_unique<std::vector<FloatNumber> const>(std::move(collected.smallest)));
  }
  if (needs.ranking) {
    // The numbers themselves, as many as the ranges may have, are not kept.
    std::map<RankedRecord, ThresholdOperand, ByRank> thresholds;
    for (RankedRecord const& record : _ranked) {
      thresholds.emplace(record, thresholdInRanking(*collected.ranking, record));
    }
    _thresholds.keepFirst(std::make_unique<std::map<RankedRecord, ThresholdOperand, ByRank> const>(
        std::move(thresholds)));
  }
  if (needs.occurrences) {
    _repeated.keepFirst(std::move(collected.repeated));
  }
}

}  // namespace Zorv::ConditionalFormatters
