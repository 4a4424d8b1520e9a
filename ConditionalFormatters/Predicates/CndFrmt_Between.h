#pragma once

#include <boost/optional.hpp>

#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValue.h"

// Tests of a cell's value against a lower and an upper bound, both inclusive.
//
// The bounds are used as they are: when the lower one is the greater, no value lies between. A
// value of another kind than a bound is neither between nor outside. A bound without a value is
// satisfied by "between" and breached by "not between".
namespace Zorv::ConditionalFormatters {

using BoundsTest = bool (*)(FormulaValue const& cellValue,
                            boost::optional<FormulaValue> const& lower,
                            boost::optional<FormulaValue> const& upper);

/// The test of a kind of record; never null, and false for every value where the kind is unknown.
[[nodiscard]] BoundsTest findBoundsTest(DOM::BinaryConditionalFormatType type) noexcept;

}  // namespace Zorv::ConditionalFormatters
