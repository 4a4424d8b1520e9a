#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "Utils/TableRange.h"
#include "Utils/WorkBudget.h"
#include "python/Native/Book.h"

/// Passes over the cells of a sheet, with their results as plain data. Each pass sees the moment of
/// the book, throws what the budget throws, and skips cells that fail.
namespace Zorv::Python {

/// The cells that a pass looks at. Borrows the budget.
struct PassArea {
  std::size_t sheet = 0;
  TableRange range;
  unsigned threadCount = 1;
  WorkBudget* budget = nullptr;
};

/// Result for a cell, by indices into the lists of its PassCells.
struct PassCell {
  static constexpr std::int32_t none = -1;

  std::uint32_t row;
  std::uint32_t column;
  std::int32_t own;          ///< style without the rules; none where there is no style
  std::int32_t conditional;  ///< style that the rules give; none where no rule gives one
  std::int32_t effective;    ///< both
  std::int32_t rules;
  std::int32_t visuals;
  std::int32_t failure;
};

/// The reason why a rule could not be evaluated for a cell.
struct PassFailure {
  std::size_t rule;
  std::string reason;
};

/// Cells of a pass, row by row, and what they share. Styles and visuals are the records of
/// records/JsonText.h and records/VisualJson.h.
struct PassCells {
  std::vector<PassCell> cells;
  std::vector<std::string> styles;
  std::vector<std::vector<std::size_t>> rules;  ///< numbers, by priority
  std::vector<std::string> visuals;
  std::vector<PassFailure> failures;
};

/// Resolves cells. With `onlyDecided`, cells that no rule decides and none failed for are left out.
[[nodiscard]] PassCells resolveCells(Book const& book, PassArea const& area,
                                     ConditionalFormatters::TablePass::Positions positions,
                                     bool onlyDecided);

/// A rectangle of cells with one conditional style.
struct PassRun {
  TableRange range;
  std::size_t style;
};

struct PassRuns {
  std::vector<PassRun> runs;
  std::vector<std::string> styles;
};

/// Resolves the positions on which some condition is, as rectangles of one style.
[[nodiscard]] PassRuns resolveRuns(Book const& book, PassArea const& area);

/// Values of positions in a table of numbers beside those of rules.
inline constexpr std::int32_t noRule = -1;
inline constexpr std::int32_t failedCell = -2;

/// Writes for each position of the range, row by row, the number of the first condition that holds;
/// `noRule` where none does, and `failedCell` where one could not be evaluated. `numbers` has one
/// element for each position.
void fillFirstRules(Book const& book, PassArea const& area, std::span<std::int32_t> numbers);

/// The same with the index of all conditions that hold, in the list that is returned: numbers of
/// rules, by priority, in the order in which they first occur.
[[nodiscard]] std::vector<std::vector<std::size_t>> fillRuleSets(Book const& book,
                                                                 PassArea const& area,
                                                                 std::span<std::int32_t> numbers);

}  // namespace Zorv::Python
