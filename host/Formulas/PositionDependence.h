#pragma once

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The coordinates of the evaluated cell that the value of a formula may depend on.
struct PositionDependence {
  bool row = false;     ///< on the row
  bool column = false;  ///< on the column

  friend bool operator==(PositionDependence const&, PositionDependence const&) noexcept = default;
};

/// The coordinates on which a formula depends: `$L1="x"` has the same value in all columns of a
/// row.
///
/// In doubt a coordinate is set: both for volatile functions, defined names, implicit intersection,
/// and functions that ask for the cell's position. Evaluates nothing; linear in the formula.
[[nodiscard]] ZORV_HOST_EXPORT PositionDependence
findPositionDependence(DOM::FormulaSyntaxTree::Expr const& expr);

}  // namespace Zorv::Formulas
