#pragma once

#include "OfficeUtils/LocaleContext.h"
#include "analysis/Explain/CellAccount.h"
#include "tool/Output/ExplainLines.h"
#include "workbook/Document.h"

namespace Zorv::Tool {

/// Adds what became of one rule: its outcome, how it was tested, its formulas step by step, and
/// which properties it sets.
void addRule(Analysis::RuleAccount const& rule, Analysis::CellAccount const& cell,
             Workbook::Document const& document, OfficeUtils::LocaleContext const& locale,
             ExplainLines& lines);

}  // namespace Zorv::Tool
