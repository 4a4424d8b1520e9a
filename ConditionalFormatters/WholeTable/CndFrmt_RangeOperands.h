#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CollectOperands.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedOperands.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_Lazy.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PassRequest.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_WatchedCells.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/FollowedAreas.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

namespace Zorv::ConditionalFormatters {

/// The operands that conditions of formats over the same ranges take from the values there.
///
/// They are collected when they are first asked for, and then all at once that the formats need:
/// twelve averages over one range read it once. Which cells repeat a value is found for the few
/// cells of a small request alone, and for all cells at the next request.
///
/// Const operations throw what the provider throws, and then keep what they had. Ownership: borrows
/// what it is made from. Threads: const operations may be called from several threads; those that
/// need the same operand wait for the first.
class RangeOperands {
public:
  RangeOperands(ValueContextProvider const& provider, DOM::Table const& table,
                std::vector<TableRange> const& ranges) noexcept
      : _provider(provider), _table(table), _ranges(ranges) {}

  [[nodiscard]] ValueContextProvider const& getProvider() const noexcept { return _provider; }
  [[nodiscard]] DOM::Table const& getTable() const noexcept { return _table; }
  [[nodiscard]] std::vector<TableRange> const& getRanges() const noexcept { return _ranges; }

  /// Adds the needs of a format with these ranges. To be called before anything is asked.
  void addFormat(DOM::ConditionalFormatOperator const& record);
  /// Adds what formulas ask of the ranges, which are then one range; likewise.
  void addAspects(Formulas::AreaAspects const& aspects) noexcept { _aspects |= aspects; }

  /// Requires that a mean is needed.
  [[nodiscard]] MeanOperand getMean(PassRequest const& request) const;

  /// The threshold of a top or bottom condition. Requires that such a format was added.
  [[nodiscard]] ThresholdOperand getThreshold(DOM::TopBottomConditionalFormatOperator const& record,
                                              PassRequest const& request) const;

  /// Finds which cells repeat a value, of those that the request asks about at least.
  void prepareOccurrences(PassRequest const& request) const;

  /// True if the value of a cell occurs elsewhere in the ranges, too, by the equality of
  /// FormulaValueMultiset; a cell of two ranges counts twice. Requires an existing cell of the
  /// ranges with a value that can be compared.
  [[nodiscard]] bool isRepeated(CellIndex cell, PassResources const& resources) const {
    CellSet const* const repeated = _repeated.find();
    return repeated != nullptr ? repeated->contains(cell.getRow().get(), cell.getColumn().get())
                               : findIfRepeated(cell, resources);
  }

  // What follows is for a document that is edited, and needs exclusive access.

  /// Operands that new values have changed.
  struct Change {
    bool isFollowed;                 ///< false: anything may be new
    std::vector<CellIndex> flipped;  ///< cells that began to repeat a value, or ended
  };

  /// Works until a moment on operands that follow edits; see FollowedOperands. True if there is
  /// more to do.
  bool prepareUntil(FollowedOperands::Clock::time_point end);

  /// Takes what follows edits from operands of the same provider and table, if it serves here, too.
  /// `moves`: edits of lines that led from the ranges there to these; null if they are the same.
  /// Throws what the provider throws.
  void takeOver(RangeOperands& others, SheetMoves const* moves);

  /// Follows edits no longer, nor ever again.
  void stopFollowing() noexcept {
    _followed.reset();
    _cannotFollow = true;
  }

  /// Forgets everything.
  void forget() noexcept;

  /// Takes over that the cells of some areas have new values. What does not follow edits is
  /// forgotten. If this throws, nothing may be asked before everything is forgotten.
  [[nodiscard]] Change valuesChanged(std::span<TableRange const> areas);

  /// The same for edits of lines, where the ranges are as before.
  void linesChanged(SheetMoves const& moves);

  /// The operands that follow edits, once they are complete; null before.
  [[nodiscard]] FollowedOperands const* findFollowed() const noexcept {
    return _followed && _followed->isComplete() ? _followed.get() : nullptr;
  }

  /// True if operands that follow edits are prepared, or complete.
  [[nodiscard]] bool isFollowing() const noexcept { return _followed != nullptr; }

  /// How many values are kept to follow edits.
  [[nodiscard]] std::size_t countFollowed() const noexcept {
    return _followed ? _followed->size() : 0;
  }

private:
  using RankedRecord = DOM::TopBottomConditionalFormatOperator;
  struct ByRank {
    [[nodiscard]] bool operator()(RankedRecord const& a, RankedRecord const& b) const;
  };

  /// The same if nothing of all cells is collected.
  [[nodiscard]] bool findIfRepeated(CellIndex cell, PassResources const& resources) const;
  void forgetCollected() noexcept;
  void dropHopeless() noexcept;
  [[nodiscard]] OperandNeeds findMissing(OperandNeeds needs) const noexcept;
  /// Needs worth collecting if some of these are missing.
  [[nodiscard]] OperandNeeds findWorth(OperandNeeds const& needs,
                                       bool asksOneFormat) const noexcept;
  void collect(OperandNeeds const& needs, PassRequest const& request) const;
  void keep(CollectedOperands collected, OperandNeeds const& needs) const;

  ValueContextProvider const& _provider;
  DOM::Table const& _table;
  std::vector<TableRange> const& _ranges;
  OperandNeeds _needs;  ///< of all formats
  /// Of the formats, those whose threshold is found among all numbers.
  std::set<RankedRecord, ByRank> _ranked;
  Formulas::AreaAspects _aspects;  ///< of all formulas

  mutable std::recursive_mutex _collecting;
  // Collected for an unchanged document: nothing of it is kept once operands follow edits.
  Lazy<MeanOperand> _mean;
  Lazy<std::vector<FloatNumber>> _largest;
  Lazy<std::vector<FloatNumber>> _smallest;
  Lazy<std::map<RankedRecord, ThresholdOperand, ByRank>> _thresholds;
  Lazy<RepeatedAmongWatched> _repeatedAmongWatched;
  Lazy<CellSet> _repeated;

  std::unique_ptr<FollowedOperands> _followed;
  bool _cannotFollow = false;
};

}  // namespace Zorv::ConditionalFormatters
