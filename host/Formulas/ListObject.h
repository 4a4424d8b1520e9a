#pragma once

#include <string>
#include <vector>

#include "FormulaModel/DocTableIndex.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// A named rectangle of cells with named columns, to which structured references such as
/// `Sales[Amount]` refer (a "table" in ISO/IEC 29500-1, 18.5).
struct ListObject {
  std::string name;                      ///< as formulas write it
  FormulaModel::DocTableIndex table;     ///< the table that has it
  TableRange range;                      ///< header and totals rows included
  unsigned long headerRowCount = 1;      ///< 0 or 1
  unsigned long totalsRowCount = 0;      ///< 0 or 1
  std::vector<std::string> columnNames;  ///< one for each column of the range
};

}  // namespace Zorv::Formulas
