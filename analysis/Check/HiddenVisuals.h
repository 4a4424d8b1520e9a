#pragma once

#include <span>
#include <vector>

#include "Utils/WorkBudget.h"
#include "analysis/Check/CheckFinding.h"
#include "analysis/Check/CheckedSheet.h"

namespace Zorv::Analysis {

/// Adds the colour scales, data bars and icon sets that can never show: on each of their cells an
/// earlier rule of the same kind draws, or one of the conditions that `always` hold stops.
/// `always` is by priority.
void addHiddenVisuals(CheckedSheet const& sheet, std::span<CheckedRule const* const> always,
                      StepCounter& steps, std::vector<CheckFinding>& findings);

}  // namespace Zorv::Analysis
