#pragma once

#include <string>

#include "workbook/Document.h"

namespace Zorv::Words {

/// What a rule gives the cells on which it holds: its style, or what a visual rule draws. Empty for
/// a rule that is not resolved.
[[nodiscard]] std::string describeEffect(Workbook::Document const& document,
                                         Workbook::Rule const& rule);

}  // namespace Zorv::Words
