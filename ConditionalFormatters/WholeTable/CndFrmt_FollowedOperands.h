#pragma once

#include <chrono>
#include <cstddef>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_NumberRanking.h"
#include "ConditionalFormatters/Following/CndFrmt_TextPool.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueClasses.h"
#include "ConditionalFormatters/Following/CndFrmt_ValueColumn.h"
#include "ConditionalFormatters/Parallel/CndFrmt_BlockList.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_OperandNeeds.h"
#include "DOM/ConditionalFormatOperator.h"
#include "DOM/Table.h"
#include "Utils/CellIndex.h"
#include "Utils/FloatNumber.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// The operands of some ranges, kept up to date while values change: a column of all values, and
/// what the formats need beside it, a ranking of the numbers and classes of equal values.
///
/// Made piece by piece, in the time that a caller can spare. An edit then costs some microseconds
/// for each cell, and up to a millisecond for a million numbers if their sum is rounded. Takes up
/// to 70 bytes for each cell.
///
/// An operation that throws leaves an object that may only be destroyed. Ownership: borrows what it
/// is made from. Threads: const operations may be called from several threads.
class FollowedOperands {
public:
  using Clock = std::chrono::steady_clock;

  FollowedOperands(ValueContextProvider const& provider, DOM::Table const& table,
                   std::vector<TableRange> const& ranges, OperandNeeds const& needs);

  /// Reads further cells until a moment has come, a few milliseconds more at most. Throws what the
  /// provider throws.
  void prepareUntil(Clock::time_point end);

  /// Whether everything has been read, so that the operands can be asked for.
  [[nodiscard]] bool isComplete() const noexcept { return _isComplete; }
  /// Whether the ranges cannot be followed: their texts crowd in a hash table.
  [[nodiscard]] bool isHopeless() const noexcept { return _isHopeless; }

  /// Whether it is worth to follow new values in some areas, instead of reading all cells again.
  [[nodiscard]] bool isWorthFollowing(std::span<TableRange const> areas) const;

  /// Reads the cells of some areas again. Gives the cells that repeat a value now and did not
  /// before, or did before and do no longer.
  [[nodiscard]] std::vector<CellIndex> valuesChanged(std::span<TableRange const> areas);

  [[nodiscard]] MeanOperand const& getMean() const noexcept { return _mean; }
  /// The threshold of a condition whose needs were told.
  [[nodiscard]] ThresholdOperand getThreshold(
      DOM::TopBottomConditionalFormatOperator const& record) const;
  [[nodiscard]] bool isRepeated(CellIndex cell) const noexcept {
    return _repeated.contains(cell.getRow().get(), cell.getColumn().get());
  }

  /// How many values it holds, and about how many bytes it takes.
  [[nodiscard]] std::size_t size() const noexcept { return _column.size(); }
  [[nodiscard]] std::size_t countBytes() const noexcept;

private:
  /// A row block of a range.
  struct BlockOfRange {
    std::size_t range;
    TableRange block;
  };
  /// A cell of which it was asked whether it repeats a value, and the first answer.
  struct Before {
    PositionKey cell;
    bool wasRepeated;
  };

  [[nodiscard]] bool ranks() const noexcept {
    return _needs.ranking || _needs.largest > 0 || _needs.smallest > 0;
  }
  void readBlock(BlockOfRange const& block);
  void readArea(std::size_t range, TableRange const& area);
  void rankNumber(FloatNumber number);
  void flushNumbers();

  /// The bits under which a value is kept.
  [[nodiscard]] ValueBits takeBits(FormulaValue const& value);
  void setValue(PlaceKey place, ValueBits bits);
  void addToClass(ValueBits bits, PositionKey cell);
  void removeFromClass(ValueBits bits, PositionKey cell);
  void mark(PositionKey cell, bool isRepeated);
  [[nodiscard]] std::vector<CellIndex> listFlipped();
  void updateMean();

  ValueContextProvider const& _provider;
  DOM::Table const& _table;
  std::vector<TableRange> const& _ranges;
  OperandNeeds _needs;

  std::vector<BlockOfRange> _toRead;  ///< the last one first
  bool _isComplete = false;
  bool _isHopeless = false;

  ValueColumn _column;
  NumberRanking _ranking;
  std::vector<FloatNumber> _unranked;  ///< numbers of the column that the ranking does not have yet
  ValueClasses _classes;
  TextPool _texts;
  CellSet _repeated;
  bool _isEditing = false;
  std::vector<Before> _marked;  ///< by an edit, in their order
  MeanOperand _mean{};
};

}  // namespace Zorv::ConditionalFormatters
