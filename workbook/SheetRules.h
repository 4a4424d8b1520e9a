#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "visuals/CellVisuals.h"
#include "workbook/Document.h"
#include "workbook/Export.h"
#include "workbook/Rule.h"

namespace Zorv::Workbook {

/// The rules of a cell's visuals; null for those that it does not have.
struct VisualRules {
  Rule const* scale = nullptr;  ///< of the cell's colour
  Rule const* bar = nullptr;    ///< of the cell's bar
  Rule const* icon = nullptr;   ///< of the cell's icon
};

/// The rules of one sheet and the formats that were made from them. Borrows the document. Formats
/// that a program has added to the sheet have no rule, and must not be asked about.
class ZORV_WORKBOOK_EXPORT SheetRules {
public:
  /// `formatRefs` are those of the sheet's table.
  SheetRules(Document const& document, std::size_t sheet,
             ConditionalFormatters::ConditionalFormatRefs const& formatRefs);

  /// The rule that a format was made from.
  [[nodiscard]] Rule const& ruleOf(ConditionalFormatters::FormatIndex format) const noexcept {
    return *_rules[format];
  }

  /// The rule that a visual format of the sheet was made from.
  [[nodiscard]] Rule const& ruleOfVisual(std::size_t visual) const noexcept {
    return *_visualRules[visual];
  }

  /// The rules that gave a cell its visuals.
  [[nodiscard]] VisualRules rulesOf(Visuals::CellVisuals const& visuals) const noexcept;

  /// Lists the rules that decide for a cell, by priority: those of the formats that hold, and those
  /// that gave it its visuals. What the list held before is removed.
  void listDeciding(std::span<ConditionalFormatters::FormatIndex const> formats,
                    VisualRules const& visuals, std::vector<Rule const*>& deciding) const;

  /// The index of the format that was made from a rule. Requires that the rule is a condition that
  /// is resolved, and of this sheet. Logarithmic.
  [[nodiscard]] std::size_t formatOf(Rule const& rule) const noexcept;

private:
  std::vector<Rule const*> _rules;        ///< by format
  std::vector<Rule const*> _visualRules;  ///< by visual format
  std::vector<std::pair<DOM::ConditionalFormat const*, std::size_t>> _formats;  ///< by address
};

}  // namespace Zorv::Workbook
