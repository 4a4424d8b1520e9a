#pragma once

#include <string>
#include <string_view>

#include "workbook/Rule.h"

/// Rules in words.
namespace Zorv::Tool {

/// What a kind of rule is called, by the type that the file gives it: "colour scale" for
/// `colorScale`; the type itself where it has no name here.
[[nodiscard]] std::string describeType(std::string_view type);

/// What a rule asks of a cell, such as `cell > 5000`, `formula $D4<TODAY()` or `top 10 %`. For a
/// rule that is not resolved, what kind it is.
[[nodiscard]] std::string describeCondition(Workbook::Rule const& rule);

/// Where a rule applies: its areas, or the first of them and how many more where that is long.
[[nodiscard]] std::string describeRanges(Workbook::Rule const& rule);

}  // namespace Zorv::Tool
