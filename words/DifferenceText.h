#pragma once

#include <string>

#include "analysis/Diff/CompareCells.h"
#include "analysis/Diff/CompareRules.h"

/// Differences in words.
namespace Zorv::Words {

/// What differs about a changed rule, such as `ranges, style`; else the word for its change.
[[nodiscard]] std::string describeChange(Analysis::RuleDifference const& difference);

/// What one version of a rule has where the other differs; `-` if the version lacks the rule.
[[nodiscard]] std::string describeSide(Workbook::Document const& document,
                                       Workbook::Rule const* rule,
                                       Analysis::RuleDifference const& difference);

/// What a cell gets: its style and its visuals; `-` for neither.
[[nodiscard]] std::string describeLook(Analysis::CellLook const& look);

}  // namespace Zorv::Words
