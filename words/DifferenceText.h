#pragma once

#include <string>

#include "analysis/Diff/CompareCells.h"
#include "analysis/Diff/CompareRules.h"

/// Differences in words.
namespace Zorv::Words {

/// Aspects of a changed rule that differ, such as `ranges, style`; else the word for its change.
[[nodiscard]] std::string describeChange(Analysis::RuleDifference const& difference);

/// Text of one version of a rule where the other differs; `-` if the version lacks the rule.
[[nodiscard]] std::string describeSide(Workbook::Document const& document,
                                       Workbook::Rule const* rule,
                                       Analysis::RuleDifference const& difference);

/// Style and visuals of a cell; `-` for neither.
[[nodiscard]] std::string describeLook(Analysis::CellLook const& look);

}  // namespace Zorv::Words
