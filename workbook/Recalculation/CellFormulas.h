#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::Workbook {

/// A formula as a file writes it, for one cell or shared by several cells.
struct FormulaSource {
  std::string text;
  CellIndex place{RowIndex(0), ColumnIndex(0)};  ///< the cell that its references are relative to
  bool isShared = false;
  bool isArray = false;            ///< evaluated as an array formula
  std::optional<TableRange> area;  ///< the cells that its array fills, if there are several
  bool isTooLarge = false;         ///< its area has more cells than arrays may fill
};

/// A cell with a formula.
struct FormulaCell {
  std::uint32_t sheet;
  std::uint32_t column;
  std::uint32_t row;
  std::uint32_t formula;  ///< index in CellFormulas::formulas

  [[nodiscard]] CellIndex getPlace() const noexcept { return {RowIndex(row), ColumnIndex(column)}; }
};

/// Formulas of a workbook, and the cells that have them.
struct CellFormulas {
  std::vector<FormulaSource> formulas{};
  std::vector<FormulaCell> cells{};  ///< in any order
};

}  // namespace Zorv::Workbook
