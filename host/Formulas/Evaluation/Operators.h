#pragma once

#include <compare>

#include "DOM/FormulaSyntaxTree/Node.h"
#include "Formulas/Evaluation/Value.h"
#include "OfficeUtils/LocaleContext.h"

/// The operators between single values.
namespace Zorv::Formulas {

class Evaluator;

/// Requires an operator other than those between references, and single values. An error on either
/// side is the result, the left one first.
[[nodiscard]] Value applyBinary(DOM::FormulaSyntaxTree::Operator op, Value const& left,
                                Value const& right, Evaluator& evaluator);

/// Negation or percentage of a single value.
[[nodiscard]] Value applyUnary(DOM::FormulaSyntaxTree::Operator op, Value const& argument,
                               OfficeUtils::LocaleContext const& locale);

/// Orders single values that are no errors, as comparisons and sorting do: numbers before texts
/// before truth values; texts without regard to letter case; an empty value as the zero, the empty
/// text or the false with which it is compared.
[[nodiscard]] std::strong_ordering compareValues(Value const& left, Value const& right) noexcept;

}  // namespace Zorv::Formulas
