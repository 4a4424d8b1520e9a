#pragma once

#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::ConditionalFormatters {

/// Tests of a value's kind: blank, not blank, error, not an error.
using ValueKindTest = bool (*)(FormulaValue const& value);

/// The test of a kind of record; null for a kind that is no test of the value's kind.
[[nodiscard]] ValueKindTest findValueKindTest(DOM::NullaryConditionalFormatType type) noexcept;

}  // namespace Zorv::ConditionalFormatters
