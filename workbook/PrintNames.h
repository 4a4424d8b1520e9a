#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "Utils/TableRange.h"
#include "workbook/Document.h"

/// Print areas and titles from the reserved names of a sheet (ISO/IEC 29500-1, 18.2.5).
namespace Zorv::Workbook {

/// Rows and columns that are repeated on each page: whole rows, and whole columns.
struct PrintTitles {
  std::optional<TableRange> rows;
  std::optional<TableRange> columns;
};

/// The ranges that are printed; none where the sheet is printed as a whole, and where the name is
/// no list of ranges.
[[nodiscard]] std::vector<TableRange> findPrintAreas(Document const& document, std::size_t sheet);

[[nodiscard]] PrintTitles findPrintTitles(Document const& document, std::size_t sheet);

}  // namespace Zorv::Workbook
