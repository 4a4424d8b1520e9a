#pragma once

#include <optional>
#include <string>

#include "Formulas/ContextProvider.h"
#include "Utils/WorkBudget.h"
#include "analysis/Check/CheckFinding.h"
#include "analysis/Check/CheckedSheet.h"

namespace Zorv::Analysis {

/// An answer that a condition gives for every cell, whatever the cells hold.
struct ConditionFate {
  bool holds = false;
  Severity severity = Severity::Warning;
  std::string reason;
};

/// The fate of a rule's condition, if it can be told from the condition alone, or from the kinds of
/// values in its ranges. Evaluates formulas of constants. Cost: for some conditions a walk over the
/// cells of the ranges, up to the first that settles the question.
[[nodiscard]] std::optional<ConditionFate> findFate(CheckedRule const& rule,
                                                    CheckedSheet const& sheet,
                                                    Formulas::ContextProvider const& provider,
                                                    StepCounter& steps);

}  // namespace Zorv::Analysis
