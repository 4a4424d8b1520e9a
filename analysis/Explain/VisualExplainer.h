#pragma once

#include <optional>

#include "ConditionalFormatters/CndFrmt_CellExplanation.h"
#include "DOM/CellInfo.h"
#include "Utils/WorkBudget.h"
#include "analysis/Explain/CellAccount.h"
#include "visuals/VisualResolver.h"
#include "workbook/SheetRules.h"

namespace Zorv::Analysis {

/// True for a cell in the rule's ranges.
[[nodiscard]] bool isOn(Workbook::Rule const& rule, CellIndex cell);

/// Visuals that the formats of a sheet give a cell, and the first failure.
struct VisualsOfCell {
  Visuals::CellVisuals drawn;
  std::optional<Visuals::VisualFailure> failure;
};

/// Throws what the budget throws, which may be null.
[[nodiscard]] VisualsOfCell findVisuals(Visuals::VisualResolver const& resolver,
                                        DOM::CellInfo const& cell, WorkBudget* budget);

/// Tells of visual rules what became of them for one cell. Borrows everything.
class VisualExplainer {
public:
  VisualExplainer(Workbook::SheetRules const& rules,
                  ConditionalFormatters::CellExplanation const& explanation,
                  VisualsOfCell const& visuals, CellAccount const& account) noexcept
      : _rules(rules), _explanation(explanation), _visuals(visuals), _account(account) {}

  /// The account of a visual rule.
  [[nodiscard]] RuleAccount explain(Workbook::Rule const& rule) const;

private:
  [[nodiscard]] Workbook::Rule const* findEnd(Workbook::Rule const& rule) const;
  [[nodiscard]] Workbook::Rule const* findDrawn(Workbook::Rule const& rule) const noexcept;

  Workbook::SheetRules const& _rules;
  ConditionalFormatters::CellExplanation const& _explanation;
  VisualsOfCell const& _visuals;
  CellAccount const& _account;
};

}  // namespace Zorv::Analysis
