#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

/// Cells and ranges in A1 notation. Letter case does not matter, and a `$` may stand before each
/// coordinate; positions outside the sheet are none.
namespace Zorv::Workbook {

/// `F5`.
[[nodiscard]] std::string toAddress(CellIndex index);

/// `F5:G9`, or `F5` for a single cell. The range must not be empty.
[[nodiscard]] std::string toAddress(TableRange const& range);

/// All ranges, separated by spaces, as workbook files list them.
[[nodiscard]] std::string toAddress(std::vector<TableRange> const& ranges);

/// The cell that a text such as `C9` names; nothing for any other text.
[[nodiscard]] std::optional<CellIndex> parseCell(std::string_view text) noexcept;

/// The range that a text such as `A1:C9`, `B2`, `A:C` or `3:5` names, with the corners in any
/// order; nothing for any other text.
[[nodiscard]] std::optional<TableRange> parseRange(std::string_view text) noexcept;

/// The ranges of a list separated by spaces or commas; nothing where one of them is no range, or
/// where there is none.
[[nodiscard]] std::optional<std::vector<TableRange>> parseRanges(std::string_view text);

}  // namespace Zorv::Workbook
