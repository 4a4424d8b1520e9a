#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "workbook/Document.h"

namespace Zorv::Analysis {

enum class RuleChange : std::uint8_t {
  Added,    ///< only in the second document
  Removed,  ///< only in the first
  Changed,  ///< the same condition, but something else about it differs
  Moved,    ///< the same in all but its place among the other rules
};

/// Aspects of a changed rule that differ.
struct RuleAspects {
  bool ranges = false;
  bool style = false;
  bool stop = false;
  // Of colour scales, data bars and icon sets.
  bool thresholds = false;
  bool colours = false;
  bool icons = false;    ///< the set, the rule's own icons, or their order
  bool drawing = false;  ///< anything else: lengths, axis, direction, fading, whether values show

  friend bool operator==(RuleAspects const&, RuleAspects const&) noexcept = default;
};

/// A rule that is not the same in two versions of a sheet. Borrows the documents.
struct RuleDifference {
  RuleChange change = RuleChange::Changed;
  Workbook::Rule const* first = nullptr;   ///< null for an added rule
  Workbook::Rule const* second = nullptr;  ///< null for a removed rule
  RuleAspects aspects = {};                ///< of a changed rule
};

/// The rules of a sheet that differ in another version of it, in the order of priority: those of
/// the first version, then those that were added.
///
/// Rules are the same if their kinds, operators, conditions, ranges, styles and stop flags are, by
/// value. Formulas of conditions are compared by what they say on each cell, those of thresholds as
/// they are written. Numbers and the numbers of
/// priorities do not matter, but the order does: the fewest rules that can be taken for moved are.
/// Cost: n log n for n rules of different conditions.
[[nodiscard]] std::vector<RuleDifference> compareRules(Workbook::Document const& first,
                                                       std::size_t firstSheet,
                                                       Workbook::Document const& second,
                                                       std::size_t secondSheet);

}  // namespace Zorv::Analysis
