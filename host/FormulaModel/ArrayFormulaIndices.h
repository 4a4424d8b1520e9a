#pragma once

namespace Zorv::FormulaModel {

/// The place of one cell inside the rectangle of an array formula, counted from 0.
struct ArrayFormulaIndices {
  unsigned long row = 0;
  unsigned long column = 0;
};

}  // namespace Zorv::FormulaModel
