#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::Workbook {

/// A formula as a file writes it, for one cell or, shared, for several.
struct FormulaSource {
  std::string text;
  CellIndex place{RowIndex(0), ColumnIndex(0)};  ///< the cell for which it is written
  bool isShared = false;
  bool isArray = false;            ///< to be evaluated as an array formula
  std::optional<TableRange> area;  ///< the cells that its array fills, where those are several
  bool isTooLarge = false;         ///< its area has more cells than a workbook may have
};

/// A cell with a formula whose result the file does not have.
struct MissingResult {
  std::uint32_t sheet;
  std::uint32_t column;
  std::uint32_t row;
  std::uint32_t formula;  ///< index among the formulas

  [[nodiscard]] CellIndex getPlace() const noexcept { return {RowIndex(row), ColumnIndex(column)}; }
};

}  // namespace Zorv::Workbook
