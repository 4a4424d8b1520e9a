#pragma once

#include <string>
#include <string_view>

#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/LocaleContext.h"

namespace Zorv::Words {

/// How a number in a sentence is meant.
enum class NumberMeaning : bool { Number, Date };

/// A value in a sentence: `4200.5`, `"Berlin"`, `TRUE`, `#DIV/0!`, `empty`; a number that is meant
/// as a date year first, with the time of day if it has one. Long texts are shortened. Printable.
[[nodiscard]] std::string describeValue(FormulaModel::FormulaValue const& value,
                                        NumberMeaning meaning,
                                        OfficeUtils::LocaleContext const& locale);

/// The kind of a value with its article: `a number`, `an error`, `the empty value`.
[[nodiscard]] std::string_view describeKind(FormulaModel::FormulaValue const& value) noexcept;

}  // namespace Zorv::Words
