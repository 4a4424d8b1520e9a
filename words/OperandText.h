#pragma once

#include <string>

#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/LocaleContext.h"
#include "analysis/Explain/CellAccount.h"
#include "words/ValueText.h"

namespace Zorv::Words {

/// How the condition of a rule was tested, in words: `6410.5 > 5000 is true`, `the average of 12
/// numbers is 3811.5`. Empty for a condition without operands, and for a formula, whose trace says
/// it better. `meaning`: of the cell's own numbers. Printable.
[[nodiscard]] std::string describeTest(Analysis::RuleAccount const& account,
                                       FormulaModel::FormulaValue const& value,
                                       NumberMeaning meaning,
                                       OfficeUtils::LocaleContext const& locale);

}  // namespace Zorv::Words
