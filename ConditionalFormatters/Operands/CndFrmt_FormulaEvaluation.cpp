#include "ConditionalFormatters/Operands/CndFrmt_FormulaEvaluation.h"

#include <memory>
#include <utility>

#include <boost/none.hpp>
#include <boost/variant/get.hpp>

#include "DOM/Ids.h"
#include "FormulaModel/FormulaArray.h"
#include "Formulas/ContextProvider.h"
#include "Utils/Assert.h"
#include "Utils/CheckedPtr.h"
#include "Utils/NumCast.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr char const* sourceFile =
    "/code/ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator";

FormulaValue takeOnlyValue(std::shared_ptr<FormulaModel::FormulaArray const> const& result) {
  CheckedPtr<FormulaModel::FormulaArray const> const array(result);
  if (array->getHeight() != 1) {
    doFailAssert(sourceFile, 65, "array->getHeight() == 1");
  }
  if (array->getWidth() != 1) {
    doFailAssert(sourceFile, 66, "array->getWidth() == 1");
  }
  return *array->begin();
}

}  // namespace

Formulas::Context makeContext(Formulas::ContextProvider const& provider, DOM::Table const& table,
                              CellIndex cell) {
  return {provider.getTableContext(table),
          cell.getRow(),
          cell.getColumn(),
          boost::none,
          DOM::RowID(0),
          DOM::ColumnID(0)};
}

Offsets calculateOffsets(CellIndex cell, CellIndex baseCell) {
  // One statement for each conversion: the first one that fails is the one reported.
  int const column = numCast<int>(cell.getColumn().get());
  int const baseColumn = numCast<int>(baseCell.getColumn().get());
  int const row = numCast<int>(cell.getRow().get());
  int const baseRow = numCast<int>(baseCell.getRow().get());
  return {column - baseColumn, row - baseRow};
}

boost::optional<FormulaValue> reduceToValue(Formulas::CalcResult result) {
  if (auto* value = boost::get<FormulaValue>(&result)) {
    return std::move(*value);
  }
  using Array = std::shared_ptr<FormulaModel::FormulaArray const>;
  if (auto const* array = boost::get<Array>(&result)) {
    return takeOnlyValue(*array);
  }
  return boost::none;
}

}  // namespace Zorv::ConditionalFormatters
