#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_CellExplanation.h"
#include "ConditionalFormatters/CndFrmt_CellWorker.h"
#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/CndFrmt_StyleRun.h"
#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

class ConditionalFormattingPropsCalculator;
class PreparedTable;

/// Resolves many cells of one table: gives for each of them what
/// ConditionalFormattingPropsCalculator::resolve() gives, the same objects, at a cost that grows
/// with the number of cells and not with its square.
///
/// What resolve() does for each cell is done once. A format's condition is prepared when the first
/// cell needs it: the values of its ranges are collected, in one walk for all formats over the same
/// ranges, and arguments that are the same for every cell are evaluated. Styles are flattened once,
/// and merged once for each sequence of styles that some cell has. A cell then costs its conditions
/// and one look-up, however many formats there are elsewhere in the table.
///
/// Each call of an operation is one pass, and sees one moment: the one that the caller has pinned
/// (see OfficeUtils::PinnedMoment), or else the clock's at its beginning. Assertions and exceptions
/// are those of resolve() for the same cell. A preparation that failed is tried again for the next
/// cell. A formula that met a limit of the engine for some cells (see
/// Formulas::EvaluationLimitError) is given up: it throws the same for every other cell, without
/// being evaluated again.
///
/// Lifetime: made by ConditionalFormattingPropsCalculator::prepare(). Borrows the calculator, the
/// styles and the table, which must outlive it. Good as long as they, the document's values and the
/// calculator's cache of table ranges do not change: make a new one after a change. Styles that it
/// returned may outlive everything. Formats are named by their index in
/// ConditionalFormattingPropsCalculator::getConditionalFormatRefs() of the table;
/// std::out_of_range is thrown for an index that is not there.
///
/// Threads: the operations may be called from several threads at once, as far as the provider may.
/// A provider that asks back about the resolver's table while it is read must be read by one
/// thread.
class CNDFRMT_EXPORT TableResolver {
public:
  TableResolver(TableResolver const&) = delete;
  TableResolver& operator=(TableResolver const&) = delete;
  TableResolver(TableResolver&& other) noexcept = default;
  TableResolver& operator=(TableResolver&& other) noexcept = default;
  ~TableResolver() = default;

  /// The style of one cell of the table; null if no format holds.
  [[nodiscard]] DOM::SharedCellStylePtr resolve(DOM::CellInfo const& cellInfo) const;

  /// True if the condition of one format holds for a cell of the table by itself: wherever the
  /// format's ranges lie, whatever its priority and whatever stops before it.
  ///
  /// Answers, asserts and throws what the Operator does that OperatorsFactory creates for the
  /// format; for a cell outside the format's ranges, that may be to stop the process.
  [[nodiscard]] bool holds(std::size_t format, DOM::CellInfo const& cellInfo) const;

  /// The operands that the condition of one format tests a cell against, for explanations of single
  /// cells: occurrences are counted in all ranges. Throws what the evaluation of the operands
  /// throws.
  [[nodiscard]] ConditionOperands findOperands(std::size_t format,
                                               DOM::CellInfo const& cellInfo) const;

  /// How resolve() comes to its answer for one cell of the table: what became of each format, the
  /// value and the operands of the test, and who sets which property.
  ///
  /// Takes the walk of resolve() itself. What resolve() throws is told as the failure of a format
  /// instead; a lack of memory and the end of the budget are thrown on. The operands are found
  /// after the walk, so those of a formula of chance (RAND) may differ from the tested ones.
  /// `budget`: what the work may cost, borrowed; null for no limits. Cost: that of resolve(), the
  /// operands once more, and a step for each format of the table.
  [[nodiscard]] CellExplanation explain(DOM::CellInfo const& cellInfo,
                                        WorkBudget* budget = nullptr) const;

  /// The cell relative to which the formulas of a format are written: the smallest first row and,
  /// independently, the smallest first column of its ranges. Stops the process if there are no
  /// ranges.
  [[nodiscard]] CellIndex getFormulaBaseCell(std::size_t format) const;

  /// Visits the cells of a pass, row by row, each row from the left.
  ///
  /// With several threads the visitor is called by any of them, but never by two at once, and
  /// always in order. No lock is held and no moment is pinned meanwhile, so it may use this
  /// resolver and its calculator. An exception of the visitor, or of a cell if the pass stops at
  /// failures, ends the pass and reaches the caller once, after the cells before it were visited.
  /// Memory: with several threads, some thousands of cells for each.
  void visit(TablePass const& pass, CellVisitor const& visitor) const;

  /// Like visit(), with work on the cells in the threads of the pass: each thread hands the cells
  /// that it resolves to a worker of its own. Then the findings of the workers visit the cells as a
  /// visitor does. Memory: what the findings take, of some blocks for each thread.
  void visitWithWorkers(TablePass const& pass, MakeCellWorker const& makeWorker) const;

  /// Visits the verdicts of one condition about the cells in the format's own ranges, inside the
  /// range of the pass: for existing cells; for every position, where All and Formatted are the
  /// same; or for every position in the areas. See holds() and visit().
  void visitVerdicts(std::size_t format, TablePass const& pass,
                     VerdictVisitor const& visitor) const;

  /// The cells of a pass as rectangles of one style each, ordered by first row, then by first
  /// column. Positions without a style, and cells that failed, are in none. A run is as wide as its
  /// style goes on, and as high as rows repeat it.
  [[nodiscard]] std::vector<StyleRun> resolveRuns(TablePass const& pass) const;

  /// The number of positions in a range that lie in the ranges of some format: what a pass over
  /// them visits. Costs `n log n` for n ranges, whatever their size.
  [[nodiscard]] std::uint64_t countFormatted(TableRange const& range) const;
  /// The same for the ranges of one format.
  [[nodiscard]] std::uint64_t countFormatted(std::size_t format, TableRange const& range) const;

  /// The number of positions in the areas and the range of a pass; the cost is the same.
  [[nodiscard]] static std::uint64_t countPositions(TablePass const& pass);

private:
  friend class ConditionalFormattingPropsCalculator;
  friend class LiveResolver;
  explicit TableResolver(std::shared_ptr<PreparedTable const> table) noexcept
      : _prepared(std::move(table)) {}

  // Shared only so that this header need not know the type: each resolver has one of its own.
  std::shared_ptr<PreparedTable const> _prepared;
};

}  // namespace Zorv::ConditionalFormatters
