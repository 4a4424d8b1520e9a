#pragma once

#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_LineMoves.h"

namespace Zorv::ConditionalFormatters {

/// The rows or the columns of a reference: two inclusive corners in any order, each of which may
/// move with the cell that refers.
struct ReferenceLines {
  unsigned long first;
  unsigned long last;
  bool firstIsRelative;
  bool lastIsRelative;
};

/// The axis along which lines are looked for.
struct LineAxis {
  unsigned long length;    ///< number of rows or columns; relative corners move around its end
  unsigned long baseLine;  ///< the line of the cell for which the reference is written
};

/// The lines of the cells whose reference, moved to them, meets changed lines: at most three
/// intervals, which may overlap.
///
/// A corner that moved around the end of the axis while the other one did not leaves a reference
/// that encloses most of the axis; lines of such cells are always among the result. Otherwise the
/// result is exact. Constant time.
[[nodiscard]] std::vector<LineInterval> findDependentLines(ReferenceLines const& reference,
                                                           LineAxis const& axis,
                                                           LineInterval const& changed);

}  // namespace Zorv::ConditionalFormatters
