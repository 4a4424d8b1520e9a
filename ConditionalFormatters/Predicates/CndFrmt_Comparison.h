#pragma once

#include <functional>

#include <boost/optional.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValue.h"
#include "FormulaModel/FormulaValueAccess.h"

// Comparisons of a cell's value with the value of a formula.
//
// Values of different kinds never compare, whichever the comparison: a number is neither equal to a
// text nor different from it. Two empty values are equal; numbers compare exactly; texts byte by
// byte; false is less than true; errors compare by their codes.
namespace Zorv::ConditionalFormatters {

using IsEqual = FormulaModel::FormulaValuesComarator<std::equal_to>;
using IsNotEqual = FormulaModel::FormulaValuesComarator<std::not_equal_to>;
using IsGreater = FormulaModel::FormulaValuesComarator<std::greater>;
using IsGreaterOrEqual = FormulaModel::FormulaValuesComarator<std::greater_equal>;
using IsLess = FormulaModel::FormulaValuesComarator<std::less>;
using IsLessOrEqual = FormulaModel::FormulaValuesComarator<std::less_equal>;

/// Compares a cell's value with an argument; false where the argument has no value.
using Comparison = bool (*)(FormulaValue const& cellValue,
                            boost::optional<FormulaValue> const& argument);

/// The comparison of a kind of record; null for a kind that compares nothing.
[[nodiscard]] Comparison findComparison(DOM::UnaryConditionalFormatType type) noexcept;

}  // namespace Zorv::ConditionalFormatters
