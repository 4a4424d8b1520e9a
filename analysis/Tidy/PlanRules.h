#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/WorkBudget.h"
#include "analysis/Shared/RangeSets.h"
#include "analysis/Tidy/Effect.h"

// Which rules of a sheet can be put together or dropped without changing the look of any cell,
// whatever the cells hold.
namespace Zorv::Analysis {

/// Facts that the plan needs about one rule.
struct PlanRule {
  /// Equal for rules whose conditions give the same verdict for each cell that is in the ranges of
  /// both.
  std::size_t condition = 0;
  Effect effect;
  /// The condition does not depend on the rule's ranges, so that they may grow.
  bool mayJoin = false;
  /// The condition holds for no cell, whatever the cells hold.
  bool neverHolds = false;
  /// The rule stays as it is, whatever the others do.
  bool isFixed = false;
  RangeSet ranges;
};

/// A rule that is left.
struct KeptRule {
  std::size_t rule = 0;             ///< index
  std::vector<std::size_t> joined;  ///< indices of the rules that became part of it, ascending
  RangeSet ranges;                  ///< afterwards; as they are if nothing was joined
};

/// A rule that goes, since an earlier one with the same condition does the same, or stops, on all
/// of its cells; or since it never holds.
struct DroppedRule {
  std::size_t rule = 0;
  /// The earlier one, which may have been joined to another since; nothing if the rule never holds.
  std::optional<std::size_t> cover = std::nullopt;
};

struct RulesPlan {
  std::vector<KeptRule> kept;  ///< in the order of priority
  std::vector<DroppedRule> dropped;
};

/// True if a rule can be written relative to another cell.
using CanMoveBase = std::function<bool(std::size_t rule, CellIndex base)>;

/// Makes the plan for rules in the order of priority. A joined rule has the place of one of those
/// that it is made of. Rules change their places only past such as do not mind, see
/// canChangePlaces(), or as share no cell with them.
///
/// Cost: quadratic in the number of rules at worst, usually nearly linear; spent from the budget,
/// which is borrowed and may be null.
[[nodiscard]] RulesPlan planRules(std::vector<PlanRule> const& rules,
                                  CanMoveBase const& canMoveBase, WorkBudget* budget);

}  // namespace Zorv::Analysis
