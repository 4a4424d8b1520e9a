#pragma once

#include "DOM/SharedStyle.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::DOM {

/// Existing cell: it has a value, a style of its own, or both.
struct Cell {
  FormulaValue value;        ///< empty where the cell has a style alone
  SharedCellStylePtr style;  ///< null where the cell has no style of its own
  bool hasFormula = false;   ///< the value is the result of a formula
};

}  // namespace Zorv::DOM
