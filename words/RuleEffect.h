#pragma once

#include <string>

#include "workbook/Document.h"

namespace Zorv::Words {

/// Effect of a rule on the cells on which it holds: its style, or the drawing of a visual rule.
/// Empty for a rule that is not resolved.
[[nodiscard]] std::string describeEffect(Workbook::Document const& document,
                                         Workbook::Rule const& rule);

}  // namespace Zorv::Words
