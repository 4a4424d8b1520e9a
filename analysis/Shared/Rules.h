#pragma once

#include <vector>

#include "DOM/CellStyle.h"
#include "workbook/Document.h"
#include "workbook/Rule.h"

namespace Zorv::Analysis {

/// The properties that the named style of a resolved condition sets, with inherited ones; none if
/// it has no named style.
[[nodiscard]] DOM::CellStyle findRuleStyle(Workbook::Document const& document,
                                           Workbook::Rule const& rule);

/// Sorts rules by priority, the smallest number first. Rules without a priority come last; rules of
/// equal priority keep their order.
void sortByPriority(std::vector<Workbook::Rule const*>& rules);

}  // namespace Zorv::Analysis
