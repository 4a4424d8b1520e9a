#include "analysis/Tidy/PlanRules.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

/// Rules that are one rule by now.
struct Group {
  std::size_t leader = 0;            ///< the rule whose place the group has
  std::vector<std::size_t> members;  ///< with the leader
  RangeSet ranges;
  TableRange bounds;
  std::size_t unitedCount = 0;  ///< of ranges, when they were last united
  bool isGone = false;          ///< moved to another group
};

bool boundsOverlap(Group const& a, Group const& b) noexcept {
  return !intersect(a.bounds, b.bounds).isEmpty();
}

CellIndex firstCell(TableRange const& a, TableRange const& b) noexcept {
  return {RowIndex(std::min(a.firstRow, b.firstRow)),
          ColumnIndex(std::min(a.firstColumn, b.firstColumn))};
}

/// The plan while it is made: goes through the groups by priority, again and again until nothing
/// changes, and drops or joins each of them if it can.
class Planner {
public:
  Planner(std::vector<PlanRule> const& rules, CanMoveBase const& canMoveBase, WorkBudget* budget)
      : _rules(rules), _canMoveBase(canMoveBase), _counter(budget) {
    for (std::size_t rule = 0; rule < rules.size(); ++rule) {
      if (rules[rule].neverHolds && !rules[rule].isFixed) {
        _plan.dropped.push_back({rule});
        continue;
      }
      RangeSet const& ranges = rules[rule].ranges;
      _groups.push_back({rule, {rule}, ranges, Workbook::findBounds(ranges), ranges.size()});
    }
  }

  [[nodiscard]] RulesPlan run() {
    for (bool changed = true; changed;) {
      changed = runOnce();
    }
    for (Group& group : _groups) {
      bool const isJoined = group.members.size() > 1;
      std::erase(group.members, group.leader);
      std::ranges::sort(group.members);
      _plan.kept.push_back({group.leader, std::move(group.members),
                            isJoined ? unite(group.ranges, _counter) : std::move(group.ranges)});
    }
    return std::move(_plan);
  }

private:
  /// Indices of groups in `_done`, ascending, by the condition of their rules.
  using ByCondition = std::unordered_map<std::size_t, std::vector<std::size_t>>;

  [[nodiscard]] PlanRule const& ruleOf(Group const& group) const noexcept {
    return _rules[group.leader];
  }

  bool runOnce() {
    std::size_t const before = _groups.size();
    _done.clear();
    _byCondition.clear();
    for (Group& group : _groups) {
      bool const stays = ruleOf(group).isFixed || (!drop(group) && !join(group));
      if (stays) {
        add(std::move(group));
      }
    }
    std::erase_if(_done, [](Group const& group) { return group.isGone; });
    _groups = std::move(_done);
    return _groups.size() < before;
  }

  void add(Group group) {
    if (!ruleOf(group).isFixed) {
      _byCondition[ruleOf(group).condition].push_back(_done.size());
    }
    _done.push_back(std::move(group));
  }

  /// True if nothing is left for a group to do on any of its cells.
  bool drop(Group const& group) {
    auto const found = _byCondition.find(ruleOf(group).condition);
    if (found == _byCondition.end()) {
      return false;
    }
    Effect const& effect = ruleOf(group).effect;
    for (std::size_t const index : found->second) {
      _counter.count();
      Group const& earlier = _done[index];
      Effect const& cover = ruleOf(earlier).effect;
      bool const doesAll = cover.stops || (cover.look == effect.look && !effect.stops);
      if (!earlier.isGone && doesAll && intersect(earlier.bounds, group.bounds) == group.bounds &&
          covers(earlier.ranges, group.ranges, _counter)) {
        for (std::size_t const member : group.members) {
          _plan.dropped.push_back({member, earlier.leader});
        }
        return true;
      }
    }
    return false;
  }

  /// True if the group is now part of another one.
  bool join(Group& group) {
    auto const found = _byCondition.find(ruleOf(group).condition);
    if (!ruleOf(group).mayJoin || found == _byCondition.end()) {
      return false;
    }
    std::vector<std::size_t> const& candidates = found->second;
    std::vector<std::size_t> obstacles;  // what overlaps the group, from the last one up
    std::size_t searched = _done.size();
    for (auto candidate = candidates.rbegin(); candidate != candidates.rend(); ++candidate) {
      if (!canUnite(_done[*candidate], group)) {
        continue;
      }
      while (searched > *candidate + 1) {
        --searched;
        if (isObstacle(_done[searched], group)) {
          obstacles.push_back(searched);
        }
      }
      if (joinUpwards(*candidate, group, obstacles) || joinDownwards(*candidate, group)) {
        return true;
      }
      constexpr std::size_t manyObstacles = 64;
      if (obstacles.size() > manyObstacles) {
        return false;
      }
    }
    return false;
  }

  [[nodiscard]] bool canUnite(Group const& earlier, Group const& later) const noexcept {
    Effect const& a = ruleOf(earlier).effect;
    Effect const& b = ruleOf(later).effect;
    return !earlier.isGone && a.look == b.look && a.stops == b.stops;
  }

  /// True if a group on the way of another one keeps it from passing.
  [[nodiscard]] bool isObstacle(Group const& between, Group const& moving) {
    _counter.count();
    return !between.isGone && boundsOverlap(between, moving) &&
           !canChangePlaces(ruleOf(between).effect, ruleOf(moving).effect) &&
           overlaps(between.ranges, moving.ranges, _counter);
  }

  /// Moves the group to the place of an earlier one. On cells that the earlier one has as well, the
  /// group does nothing, so that obstacles on these do not count.
  bool joinUpwards(std::size_t candidate, Group& group, std::vector<std::size_t> const& obstacles) {
    Group& earlier = _done[candidate];
    for (std::size_t const obstacle : obstacles) {
      if (!coversPart(earlier.ranges, group.ranges, _done[obstacle].ranges, _counter)) {
        return false;
      }
    }
    if (!canLead(earlier, group)) {
      return false;
    }
    absorb(earlier, std::move(group));
    return true;
  }

  /// Moves the earlier group to the place of the later one, which is behind all that are done.
  bool joinDownwards(std::size_t candidate, Group& group) {
    for (std::size_t between = candidate + 1; between < _done.size(); ++between) {
      if (isObstacle(_done[between], _done[candidate])) {
        return false;
      }
    }
    if (!canLead(group, _done[candidate])) {
      return false;
    }
    Group earlier = std::move(_done[candidate]);
    _done[candidate].isGone = true;
    absorb(group, std::move(earlier));
    add(std::move(group));
    return true;
  }

  /// True if the leader's formulas can be written for the cells of both groups.
  [[nodiscard]] bool canLead(Group const& leading, Group const& other) const {
    TableRange const base = Workbook::findBounds(_rules[leading.leader].ranges);
    CellIndex const joined = firstCell(leading.bounds, other.bounds);
    bool const isSameBase =
        joined.getRow().get() == base.firstRow && joined.getColumn().get() == base.firstColumn;
    return isSameBase || _canMoveBase(leading.leader, joined);
  }

  void absorb(Group& target, Group source) {
    target.members.insert(target.members.end(), source.members.begin(), source.members.end());
    target.ranges.insert(target.ranges.end(), source.ranges.begin(), source.ranges.end());
    target.bounds = Workbook::findBounds({target.bounds, source.bounds});
    // Neighbours become one range before there are many.
    constexpr std::size_t few = 64;
    if (target.ranges.size() > few && target.ranges.size() > 2 * target.unitedCount) {
      target.ranges = unite(target.ranges, _counter);
      target.unitedCount = target.ranges.size();
    }
  }

  std::vector<PlanRule> const& _rules;
  CanMoveBase const& _canMoveBase;
  StepCounter _counter;
  std::vector<Group> _groups;  ///< by priority
  std::vector<Group> _done;    ///< those of this pass that are done, by priority
  ByCondition _byCondition;
  RulesPlan _plan;
};

}  // namespace

RulesPlan planRules(std::vector<PlanRule> const& rules, CanMoveBase const& canMoveBase,
                    WorkBudget* budget) {
  return Planner(rules, canMoveBase, budget).run();
}

}  // namespace Zorv::Analysis
