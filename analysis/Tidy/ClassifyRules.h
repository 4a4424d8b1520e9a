#pragma once

#include <string>
#include <vector>

#include "analysis/Tidy/PlanRules.h"
#include "analysis/Tidy/RuleFormulas.h"
#include "analysis/Tidy/WrittenRule.h"

namespace Zorv::Analysis {

/// Facts that the plan needs about the rules of one sheet, in their order. `differentialFormats`
/// are canonical texts by index.
///
/// Rules that look at one cell at a time may be joined. Those whose ranges are part of their
/// meaning (ranks, averages, duplicates, colour scales, data bars, icon sets) may only be dropped,
/// as exact duplicates. A rule that is not understood is fixed, and passes none.
[[nodiscard]] std::vector<PlanRule> classifyRules(
    std::vector<WrittenRule> const& rules, RuleFormulas const& formulas, DOM::Styles const& styles,
    std::vector<std::string> const& differentialFormats);

}  // namespace Zorv::Analysis
