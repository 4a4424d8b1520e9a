#pragma once

#include <vector>

#include "Utils/WorkBudget.h"
#include "analysis/Check/CheckFinding.h"
#include "analysis/Check/CheckedSheet.h"

namespace Zorv::Analysis {

/// Adds rules whose formulas refer to names, sheets, tables, functions or cells that are missing.
void addMissingReferences(CheckedSheet const& sheet, std::vector<CheckFinding>& findings);

/// Adds rules whose relative references leave the sheet for some cells with data, and those whose
/// relative references were surely meant absolute.
void addMovingReferences(CheckedSheet const& sheet, StepCounter& steps,
                         std::vector<CheckFinding>& findings);

/// Adds rules whose ranges end far beyond the data, and those whose formulas read a large range
/// anew for each of many cells.
void addCostlyRules(CheckedSheet const& sheet, StepCounter& steps,
                    std::vector<CheckFinding>& findings);

}  // namespace Zorv::Analysis
