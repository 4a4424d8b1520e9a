#pragma once

#include <cstdint>
#include <string>

#include "Utils/CellIndex.h"

namespace Zorv::Workbook {

/// A formula as a file writes it, for one cell or, shared, for several.
struct FormulaSource {
  std::string text;
  CellIndex place{RowIndex(0), ColumnIndex(0)};  ///< the cell for which it is written
  bool isShared = false;
  bool isArray = false;          ///< to be evaluated as an array formula
  bool hasSeveralCells = false;  ///< its array belongs to several cells
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
