#pragma once

#include <optional>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Table.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/FollowedAreas.h"
#include "Formulas/TableContext.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Everything that the value of a formula may depend on, whatever the cell is at which the formula
/// is evaluated. In doubt a dependency is listed.
struct Dependencies {
  /// Cells to which the formula refers.
  struct Reference {
    /// The table of the cells, by its address; null for the table of the evaluated cell.
    DOM::Table const* table = nullptr;
    /// The corners. Relative coordinates move with the evaluated cell; `sheet` is meaningless.
    DOM::FormulaSyntaxTree::CellReference corners;
    /// The corners are written as seen from row 0, column 0, as those of defined names are, and not
    /// from the cell for which the formula was written.
    bool isFromFirstCell = false;
    /// Aspects of all its cells together that functions ask for, as far as these can be kept up to
    /// date; see LookupCache::follow(). None for a reference that moves with the evaluated cell.
    AreaAspects aspects;
    /// The reference to one cell whose value is counted among those of the area, for the range of a
    /// COUNTIF. Nothing where the criterion is something else.
    std::optional<DOM::FormulaSyntaxTree::CellReference> countedCell = std::nullopt;
  };
  std::vector<Reference> references;  ///< of the formula, and of the names that it uses

  /// The value may depend on any cell of any table, since the formula finds cells only when it is
  /// evaluated: OFFSET, INDIRECT, `A1:INDEX(...)`.
  bool onAnyCell = false;
  /// The value depends on the current date: TODAY.
  bool onDay = false;
  /// The value depends on the current moment, or on chance: NOW, RAND.
  bool onMoment = false;
};

/// Finds what a formula of a table depends on, through the defined names and list objects that it
/// uses, too. Evaluates nothing; linear in the formulas. Threads: as calcExpr().
///
/// Names, list objects and sheets are looked up, so that the result is good until one of them
/// changes.
[[nodiscard]] ZORV_HOST_EXPORT Dependencies
findDependencies(DOM::FormulaSyntaxTree::Expr const& expr, TableContext const& tableContext,
                 ContextProvider const& contextProvider);

}  // namespace Zorv::Formulas
