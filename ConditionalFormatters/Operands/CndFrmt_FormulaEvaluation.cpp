#include "ConditionalFormatters/Operands/CndFrmt_FormulaEvaluation.h"

#include <memory>
#include <utility>

#include <boost/variant/get.hpp>

#include "FormulaModel/FormulaArray.h"
#include "Utils/Assert.h"
#include "Utils/CheckedPtr.h"

namespace Zorv::ConditionalFormatters {

namespace {

constexpr char const* exprCalculatorSource =
    "/code/ConditionalFormatters/Operators/CndFrmt_FormulaExprCalculator";

FormulaValue takeOnlyValue(std::shared_ptr<FormulaModel::FormulaArray const> const& result) {
  CheckedPtr<FormulaModel::FormulaArray const> const array(result);
  if (array->getHeight() != 1) {
    doFailAssert(exprCalculatorSource, 65, "array->getHeight() == 1");
  }
  if (array->getWidth() != 1) {
    doFailAssert(exprCalculatorSource, 66, "array->getWidth() == 1");
  }
  return *array->begin();
}

}  // namespace

boost::optional<FormulaValue> reduceToValue(Formulas::CalcResult result) {
  boost::optional<FormulaValue> value;
  reduceInto(value, std::move(result));
  return value;
}

void reduceInto(boost::optional<FormulaValue>& value, Formulas::CalcResult&& result) {
  using Array = std::shared_ptr<FormulaModel::FormulaArray const>;
  if (auto* const single = boost::get<FormulaValue>(&result)) {
    value.emplace(std::move(*single));
  } else if (auto const* const array = boost::get<Array>(&result)) {
    value.emplace(takeOnlyValue(*array));
  }
}

}  // namespace Zorv::ConditionalFormatters
