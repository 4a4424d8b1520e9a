#pragma once

#include <string_view>

#include "Formulas/Evaluation/Outcome.h"
#include "Formulas/Evaluation/Value.h"
#include "OfficeUtils/LocaleContext.h"

/// Conversions of single values to another kind, as operators and functions do them.
namespace Zorv::Formulas {

class Evaluator;

/// Numbers as they are, truth values as 1 and 0, empties as 0, texts that read as a number as that
/// one, other texts as `#VALUE!`.
[[nodiscard]] Outcome<double> toNumber(Value const& value,
                                       OfficeUtils::LocaleContext const& locale);

/// Truth values as they are, numbers by whether they are not 0, empties as false, the words TRUE
/// and FALSE as what they say, other texts as `#VALUE!`.
[[nodiscard]] Outcome<bool> toTruth(Value const& value);

/// Texts as they are, numbers in general format, truth values as words, empties as the empty text.
/// The text may lie in the evaluation's arena.
[[nodiscard]] Outcome<std::string_view> toText(Value const& value, Evaluator& evaluator);

}  // namespace Zorv::Formulas
