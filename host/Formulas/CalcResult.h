#pragma once

#include <memory>
#include <vector>

#include <boost/variant/variant.hpp>

#include "FormulaModel/DocTableIndex.h"
#include "FormulaModel/FormulaArray.h"
#include "FormulaModel/FormulaValue.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// A rectangle of one table's cells, as the result of a formula.
struct Reference {
  FormulaModel::DocTableIndex table;  ///< the table of the cells
  TableRange range;                   ///< the cells
};

/// The result of a formula. The order of the alternatives is part of the contract: a value, an
/// array of values, a list of references (a union), one reference to more than one cell.
using CalcResult =
    boost::variant<FormulaValue, std::shared_ptr<FormulaModel::FormulaArray const>,
                   std::vector<std::shared_ptr<Reference const>>, std::shared_ptr<Reference const>>;

}  // namespace Zorv::Formulas
