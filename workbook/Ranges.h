#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

/// Lists of ranges, as rules have them.
namespace Zorv::Workbook {

/// The cell that the formulas of a rule are relative to: the smallest first row and the smallest
/// first column of all ranges. Requires a range.
[[nodiscard]] CellIndex findBaseCell(std::vector<TableRange> const& ranges);

/// The smallest range that contains all; empty if there are none.
[[nodiscard]] TableRange findBounds(std::vector<TableRange> const& ranges) noexcept;

/// The same positions in ranges that do not overlap; nothing if there would be more than `most`.
/// Takes time quadratic in the number of ranges.
[[nodiscard]] std::vector<TableRange> makeDisjoint(std::vector<TableRange> const& ranges,
                                                   std::size_t most);

/// The parts of `range` that lie outside of `hole`, up to four.
[[nodiscard]] std::vector<TableRange> subtract(TableRange const& range, TableRange const& hole);

/// `$A$1:$B$9`, also for a single cell: `$A$1:$A$1`.
[[nodiscard]] std::string toAbsoluteAddress(TableRange const& range);

}  // namespace Zorv::Workbook
