#pragma once

#include <vector>

#include "Formulas/ContextProvider.h"
#include "Utils/WorkBudget.h"
#include "analysis/Check/CheckFinding.h"
#include "analysis/Check/CheckedSheet.h"

namespace Zorv::Analysis {

/// Adds the rules of a sheet that can never show, whatever the cells hold: those that set nothing
/// and stop nothing; those that stand behind a rule that stops wherever they hold; and those whose
/// properties are all set by earlier rules wherever they hold. Repeated rules are left to
/// addRepeatedRules().
void addHiddenRules(CheckedSheet const& sheet, Formulas::ContextProvider const& provider,
                    StepCounter& steps, std::vector<CheckFinding>& findings);

/// Adds rules that are equal in everything, and groups of rules that could be one: with equal
/// conditions and styles, on ranges that touch.
void addRepeatedRules(CheckedSheet const& sheet, StepCounter& steps,
                      std::vector<CheckFinding>& findings);

}  // namespace Zorv::Analysis
