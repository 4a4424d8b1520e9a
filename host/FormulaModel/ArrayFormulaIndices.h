#pragma once

namespace Zorv::FormulaModel {

/// Row and column index of one cell inside the rectangle of an array formula, from 0.
struct ArrayFormulaIndices {
  unsigned long row = 0;     ///< from the top of the rectangle
  unsigned long column = 0;  ///< from the left of the rectangle
};

}  // namespace Zorv::FormulaModel
