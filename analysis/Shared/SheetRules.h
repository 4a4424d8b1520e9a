#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "DOM/CellStyle.h"
#include "visuals/CellVisuals.h"
#include "workbook/Document.h"
#include "workbook/Rule.h"

namespace Zorv::Analysis {

/// The rules of a cell's visuals; null for those that it does not have.
struct VisualRules {
  Workbook::Rule const* scale = nullptr;
  Workbook::Rule const* bar = nullptr;
  Workbook::Rule const* icon = nullptr;
};

/// The rules of one sheet and the formats that were made from them. Borrows the document.
class SheetRules {
public:
  /// `formatRefs` are those of the sheet's table.
  SheetRules(Workbook::Document const& document, std::size_t sheet,
             ConditionalFormatters::ConditionalFormatRefs const& formatRefs);

  /// The rule that a format was made from.
  [[nodiscard]] Workbook::Rule const& ruleOf(
      ConditionalFormatters::FormatIndex format) const noexcept {
    return *_rules[format];
  }

  /// The rule that a visual format of the sheet was made from.
  [[nodiscard]] Workbook::Rule const& ruleOfVisual(std::size_t visual) const noexcept {
    return *_visualRules[visual];
  }

  /// The rules that gave a cell its visuals.
  [[nodiscard]] VisualRules rulesOf(Visuals::CellVisuals const& visuals) const noexcept;

  /// Lists the rules that decide for a cell, by priority: those of the formats that hold, and those
  /// that gave it its visuals. What the list held before is removed.
  void listDeciding(std::span<ConditionalFormatters::FormatIndex const> formats,
                    VisualRules const& visuals, std::vector<Workbook::Rule const*>& deciding) const;

  /// The index of the format that was made from a rule. Requires that the rule is a condition that
  /// is resolved, and of this sheet. Logarithmic.
  [[nodiscard]] std::size_t formatOf(Workbook::Rule const& rule) const noexcept;

private:
  std::vector<Workbook::Rule const*> _rules;        ///< by format
  std::vector<Workbook::Rule const*> _visualRules;  ///< by visual format
  std::vector<std::pair<DOM::ConditionalFormat const*, std::size_t>> _formats;  ///< by address
};

/// The properties that the named style of a resolved condition sets, with inherited ones; none if
/// it has no named style.
[[nodiscard]] DOM::CellStyle findRuleStyle(Workbook::Document const& document,
                                           Workbook::Rule const& rule);

/// Sorts rules by priority, the smallest number first. Rules without a priority come last; rules of
/// equal priority keep their order.
void sortByPriority(std::vector<Workbook::Rule const*>& rules);

}  // namespace Zorv::Analysis
