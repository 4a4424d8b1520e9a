#pragma once

#include "tool/Output/ExplainLines.h"
#include "words/AccountText.h"

namespace Zorv::Tool {

/// Adds what became of one rule: its outcome, how it was tested, its formulas step by step, and
/// which properties it sets.
void addRule(Words::RuleText const& rule, ExplainLines& lines);

}  // namespace Zorv::Tool
