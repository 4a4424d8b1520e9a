#pragma once

#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "Formulas/ContextProvider.h"
#include "Utils/WorkBudget.h"
#include "analysis/Check/CheckFinding.h"
#include "analysis/Check/CheckedSheet.h"

namespace Zorv::Analysis {

/// Adds the rules of a sheet that cannot be evaluated for some cells, and those about which other
/// programs decide otherwise for some cells.
///
/// Looks at the cells of the rules' ranges inside the used range, with and without content, up to
/// 5,000,000 of a rule; else at those that exist. The budget may be null.
void addOtherAnswers(CheckedSheet const& sheet,
                     ConditionalFormatters::ConditionalFormattingPropsCalculator const& calculator,
                     Formulas::ContextProvider const& provider, WorkBudget* budget,
                     std::vector<CheckFinding>& findings);

}  // namespace Zorv::Analysis
