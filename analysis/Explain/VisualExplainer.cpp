#include "analysis/Explain/VisualExplainer.h"

#include <algorithm>
#include <variant>

#include "ConditionalFormatters/CndFrmt_TablePass.h"
#include "FormulaModel/FormulaValueAccess.h"

namespace Zorv::Analysis {

namespace {

namespace CF = ConditionalFormatters;

}  // namespace

bool isOn(Workbook::Rule const& rule, CellIndex cell) {
  return std::ranges::any_of(rule.ranges, [&](TableRange const& range) {
    return range.contains(cell.getRow().get(), cell.getColumn().get());
  });
}

VisualsOfCell findVisuals(Visuals::VisualResolver const& resolver, DOM::CellInfo const& cell,
                          WorkBudget* budget) {
  VisualsOfCell visuals;
  unsigned long const row = cell.getRowIndex();
  unsigned long const column = cell.getColIndex();
  CF::TablePass const pass{.range = {row, column, row + 1, column + 1},
                           .positions = CF::TablePass::Positions::All,
                           .onFailure = CF::TablePass::OnFailure::Skip,
                           .budget = budget};
  resolver.visit(pass, [&](Visuals::VisualCell const& visited) {
    visuals.drawn = visited.visuals;
    if (visited.failure != nullptr) {
      visuals.failure = *visited.failure;
    }
  });
  return visuals;
}

RuleAccount VisualExplainer::explain(Workbook::Rule const& rule) const {
  RuleAccount account{.rule = &rule};
  auto const* const content = _account.content;
  if (!isOn(rule, _account.cell)) {
    account.visual = VisualOutcome::NotOnThisCell;
  } else if (findDrawn(rule) == &rule) {
    account.visual = VisualOutcome::Draws;
  } else if (_visuals.failure && &_rules.ruleOfVisual(_visuals.failure->format) == &rule) {
    account.visual = VisualOutcome::Failed;
    account.failure = _visuals.failure->exception;
  } else if (content == nullptr || !FormulaModel::asFormulaNumberOpt(content->value)) {
    account.visual = VisualOutcome::NoNumber;
  } else {
    account.endedBy = findEnd(rule);
    account.visual =
        account.endedBy != nullptr ? VisualOutcome::NotReached : VisualOutcome::NoCondition;
  }
  return account;
}

/// The rule because of which a visual rule is not reached; null if there is none.
Workbook::Rule const* VisualExplainer::findEnd(Workbook::Rule const& rule) const {
  for (CF::FormatIndex format = 0; format < _explanation.formats.size(); ++format) {
    auto const outcome = _explanation.formats[format].outcome;
    Workbook::Rule const& condition = _rules.ruleOf(format);
    bool const stops = outcome == FormatOutcome::Holds && condition.stopIfTrue &&
                       format < rule.visual->formatsBefore;
    if (stops || outcome == FormatOutcome::Failed) {
      return &condition;
    }
  }
  return findDrawn(rule);
}

/// The rule that draws what this one would.
Workbook::Rule const* VisualExplainer::findDrawn(Workbook::Rule const& rule) const noexcept {
  auto const& [scale, bar, icon] = _account.visualRules;
  auto const& kind = rule.visual->kind;
  return std::holds_alternative<Visuals::ColourScale>(kind) ? scale
         : std::holds_alternative<Visuals::DataBar>(kind)   ? bar
                                                            : icon;
}

}  // namespace Zorv::Analysis
