#pragma once

#include <optional>
#include <vector>

#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedFormula.h"
#include "DOM/FormulaSyntaxTree/Node.h"
#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::ConditionalFormatters {

/// A number with which a condition compares cells, before and after an edit: only cells with
/// numbers from the lesser to the larger one, both included, can be judged otherwise.
struct NumberMove {
  double least;
  double most;
  /// The number is compared with what the cell holds, as formulas read it, and not with what the
  /// provider says.
  bool isOfCells;

  friend bool operator==(NumberMove const&, NumberMove const&) noexcept = default;
};

/// How what formulas have in common for all cells has moved.
using NumberMoves = std::vector<NumberMove>;

/// The cell for which formulas of a format are written, and its ranges.
struct FormulaPlace {
  CellIndex baseCell;
  std::vector<TableRange> const& ranges;

  /// True for a reference that is to the judged cell itself, wherever in the ranges it is.
  [[nodiscard]] bool isOwnCell(DOM::FormulaSyntaxTree::CellReference const& reference) const;
};

/// Compares what the formulas of a condition have in common for all cells with that of the same
/// condition after an edit. Nothing where any cell may be judged otherwise, or where one of them
/// was not evaluated. Where a formula has parts left to evaluate for each cell, they are the same.
[[nodiscard]] std::optional<NumberMoves> findMoves(PreparedCondition const& before,
                                                   PreparedCondition const& after,
                                                   FormulaPlace const& place);

}  // namespace Zorv::ConditionalFormatters
