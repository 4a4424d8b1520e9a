#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <unordered_map>
#include <vector>

#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/CellInfo.h"
#include "workbook/Rule.h"

namespace Zorv::Tool {

/// The rules of one sheet and their conditions: asks the resolver of the sheet's table about them,
/// and tells where one cannot be evaluated.
///
/// Borrows the resolver, the formats of the table that it was made for, and the rules.
class SheetConditions {
public:
  /// Told where a condition cannot be evaluated: the rule, the cell, and what is wrong.
  using OnFailure =
      std::function<void(Workbook::Rule const&, DOM::CellInfo const&, char const* problem)>;

  SheetConditions(ConditionalFormatters::TableResolver const& resolver,
                  ConditionalFormatters::ConditionalFormatRefs const& formatRefs,
                  std::vector<Workbook::Rule const*> const& rules, OnFailure onFailure);

  /// Whether a rule's condition holds for a cell by itself, wherever the rule applies and whatever
  /// its priority. Nothing where it cannot be evaluated.
  [[nodiscard]] std::optional<bool> holds(Workbook::Rule const& rule,
                                          DOM::CellInfo const& cellInfo) const;

  /// The rules that decide about a cell, in order of priority: those whose ranges hold it and whose
  /// conditions hold, up to the first that stops. Nothing where a condition cannot be evaluated.
  [[nodiscard]] std::optional<std::vector<Workbook::Rule const*>> findDeciding(
      DOM::CellInfo const& cellInfo) const;

  /// The rule that a format comes from, by the format's place among those of the table. It must be
  /// one of the rules that were given.
  [[nodiscard]] Workbook::Rule const& ruleOf(std::size_t format) const noexcept {
    return *_rules[format];
  }

private:
  ConditionalFormatters::TableResolver const& _resolver;
  ConditionalFormatters::ConditionalFormatRefs const& _formatRefs;
  std::unordered_map<DOM::ConditionalFormat const*, std::size_t> _places;  ///< in `_formatRefs`
  std::vector<Workbook::Rule const*> _rules;  ///< by place; null for formats of other rules
  OnFailure _onFailure;
};

}  // namespace Zorv::Tool
