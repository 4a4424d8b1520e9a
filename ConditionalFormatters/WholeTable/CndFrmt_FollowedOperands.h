#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_NumberRanking.h"
#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_EqualCells.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_FollowedAnswers.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "DOM/ConditionalFormatOperator.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "Formulas/FollowedAreas.h"
#include "Utils/CellIndex.h"
#include "Utils/FloatNumber.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The operands of some ranges, kept up to date while values, rows and columns change: a column of
/// all values, and what the formats need beside it, a ranking of the numbers and classes of equal
/// values. Formulas that ask something of the same range are answered from them.
///
/// Values are read through the provider, but those that formulas alone need from the cells, as
/// formulas do.
///
/// Made piece by piece, in the time that a caller can spare. An edit then costs some microseconds
/// for each cell, and up to a millisecond for a million numbers if their sum is rounded; an edit of
/// rows or columns, as much for each cell that it adds or removes. Takes up to 70 bytes for each
/// cell, more for texts of over 24 bytes.
///
/// An operation that throws leaves an object that may only be destroyed. Ownership: borrows the
/// provider and the table. Threads: const operations may be called from several threads.
class FollowedOperands {
public:
  using Clock = std::chrono::steady_clock;

  /// `aspects`: what formulas ask; none of several ranges.
  FollowedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                   std::vector<TableRange> const& ranges, OperandNeeds const& needs,
                   Formulas::AreaAspects const& aspects = {});

  /// Reads further cells until a moment has come, a few milliseconds more at most. Throws what the
  /// provider throws.
  void prepareUntil(Clock::time_point end);

  /// True once everything has been read, so that the operands can be asked for.
  [[nodiscard]] bool isComplete() const noexcept { return _isComplete; }
  /// True if the ranges cannot be followed: their texts crowd in a hash table.
  [[nodiscard]] bool isHopeless() const noexcept { return _isHopeless; }

  /// True if it has all that formats and formulas over the same ranges need.
  [[nodiscard]] bool serves(OperandNeeds const& needs,
                            Formulas::AreaAspects const& aspects) const noexcept;

  /// True if it is worth following new values in some areas, instead of reading all cells again.
  [[nodiscard]] bool isWorthFollowing(std::span<TableRange const> areas) const;

  /// Reads the cells of some areas again. Gives the cells that repeat a value now and did not
  /// before, or did before and do no longer.
  [[nodiscard]] std::vector<CellIndex> valuesChanged(std::span<TableRange const> areas);

  /// Follows edits of the table's rows and columns, after which any cell may repeat a value.
  /// `ranges`: those after the edits, in the order of those before. False, and nothing is done, if
  /// that is not worth it. Before everything has been read, only edits are followed that leave all
  /// cells of the ranges where they are.
  [[nodiscard]] bool linesChanged(SheetMoves const& moves, std::vector<TableRange> const& ranges);

  [[nodiscard]] MeanOperand const& getMean() const noexcept { return _mean; }
  /// The threshold of a condition whose needs were told.
  [[nodiscard]] ThresholdOperand getThreshold(
      DOM::TopBottomConditionalFormatOperator const& record) const;
  [[nodiscard]] bool isRepeated(CellIndex cell) const noexcept { return _equal.isRepeated(cell); }

  /// Answers to formulas; null where they ask nothing.
  [[nodiscard]] FollowedAnswers const* getAnswers() const noexcept {
    return _answers ? &*_answers : nullptr;
  }

  /// How many values it holds, and about how many bytes it takes.
  [[nodiscard]] std::size_t size() const noexcept { return _column.size(); }
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  /// A part of a range.
  struct AreaOfRange {
    std::size_t range;
    TableRange area;
  };

  /// Cells that edits of lines take away from the ranges, and those that they bring.
  struct Difference {
    std::vector<ValueColumn::Entry> gone;  ///< at the places before
    std::vector<AreaOfRange> added;        ///< where they are now; they may overlap
    std::vector<PositionKey> leaving;      ///< the cells of `gone` that are elsewhere now
  };

  [[nodiscard]] bool ranks() const noexcept {
    return _needs.ranking || _needs.largest > 0 || _needs.smallest > 0 || _aspects.order;
  }
  /// True if equal values are counted, so that texts are told from each other.
  [[nodiscard]] bool countsEqual() const noexcept { return _needs.occurrences || _aspects.classes; }
  /// Reads the cells of an area for the first time.
  void readAll(AreaOfRange const& part);
  void readAgain(AreaOfRange const& part);
  /// A value that was read, or none for a cell that is gone.
  struct Reading {
    PlaceKey place;
    FormulaValue value;
  };
  /// Takes the value of a cell that had another one, after some more have been read.
  void takeLater(PlaceKey place, ValueBits old, FormulaValue value);
  void takeReadings();
  void flushNumbers();

  /// The bits under which the value of a cell is kept.
  [[nodiscard]] ValueBits readBits(DOM::CellInfo const& cellInfo);
  [[nodiscard]] FormulaValue readValue(DOM::CellInfo const& cellInfo);
  [[nodiscard]] ValueBits takeBits(FormulaValue const& value);
  [[nodiscard]] ValueBits takeText(std::string_view text);
  void setValue(PlaceKey place, ValueBits bits);
  void remove(std::vector<ValueColumn::Entry> const& entries);
  /// The most positions that are worth reading again.
  [[nodiscard]] std::uint64_t mostToRead() const noexcept;
  /// None if it is not worth following.
  [[nodiscard]] std::optional<Difference> findDifference(
      SheetMoves const& moves, std::vector<TableRange> const& ranges) const;
  [[nodiscard]] bool addLeaving(SheetMoves const& moves, Difference& difference) const;
  /// Counts existing cells, up to `most + 1`.
  [[nodiscard]] std::size_t countCells(TableRange const& area, std::size_t most) const;
  void markAgain(PositionKey cell);
  /// Takes over all changes of an edit.
  void settle();

  ValueContextProvider const& _provider;
  DOM::Table const& _table;
  std::vector<TableRange> _ranges;
  OperandNeeds _needs;
  Formulas::AreaAspects _aspects;

  std::vector<AreaOfRange> _toRead;  ///< the last one first
  bool _isComplete = false;
  bool _isHopeless = false;

  ValueColumn _column;
  NumberRanking _ranking;
  std::vector<FloatNumber> _unranked;  ///< numbers of the column that the ranking does not have yet
  std::vector<FloatNumber> _outdated;  ///< numbers of the ranking that an edit has taken away
  std::vector<Reading> _readings;      ///< not taken yet
  EqualCells _equal;
  bool _isEditing = false;
  MeanOperand _mean{};
  std::optional<FollowedAnswers> _answers;  ///< to formulas, if they ask
};

}  // namespace Zorv::ConditionalFormatters
