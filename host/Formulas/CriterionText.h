#pragma once

#include <string>
#include <string_view>
#include <variant>

#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// A text as the criteria of COUNTIF and similar functions see it: the number that it reads as, or
/// else the text in folded letter case.
using CriterionText = std::variant<double, std::string>;

/// Reads a text of a cell. Two texts that read as no number are equal to each other for criteria
/// just where the results are equal; a folded text is for comparisons only, and is no valid UTF-8
/// where it has other letters than those of ASCII. Linear.
[[nodiscard]] ZORV_HOST_EXPORT CriterionText
readCriterionText(std::string_view text, OfficeUtils::LocaleContext const& locale);

}  // namespace Zorv::Formulas
