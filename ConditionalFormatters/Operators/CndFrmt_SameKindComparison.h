#pragma once

#include <functional>

#include "FormulaModel/FormulaValueAccess.h"

// The comparisons of a cell's value with an argument's, for the conditions that have formulas as
// arguments. Values of different kinds never compare, whichever the comparison: a number is neither
// equal to a text nor different from it. Two empty values are alike; numbers compare exactly; texts
// byte by byte; false comes before true; errors by their codes.
namespace Zorv::ConditionalFormatters {

using IsEqual = FormulaModel::FormulaValuesComarator<std::equal_to>;
using IsNotEqual = FormulaModel::FormulaValuesComarator<std::not_equal_to>;
using IsGreater = FormulaModel::FormulaValuesComarator<std::greater>;
using IsGreaterOrEqual = FormulaModel::FormulaValuesComarator<std::greater_equal>;
using IsLess = FormulaModel::FormulaValuesComarator<std::less>;
using IsLessOrEqual = FormulaModel::FormulaValuesComarator<std::less_equal>;

}  // namespace Zorv::ConditionalFormatters
