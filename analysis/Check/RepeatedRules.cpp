#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <numeric>
#include <string>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "analysis/Check/HiddenRules.h"
#include "analysis/Shared/ConditionKey.h"

namespace Zorv::Analysis {

namespace {

using Rules = std::vector<CheckedRule const*>;

/// Rules of equal conditions, styles and stop flags, each group by priority.
std::vector<Rules> groupAlike(CheckedSheet const& sheet) {
  std::map<std::tuple<std::size_t, std::size_t, bool>, Rules> groups;
  for (CheckedRule const& rule : sheet.getRules()) {
    groups[{rule.condition, rule.style, rule.rule->stopIfTrue}].push_back(&rule);
  }
  std::vector<Rules> alike;
  for (auto& [key, rules] : groups) {
    if (rules.size() > 1) {
      alike.push_back(std::move(rules));
    }
  }
  return alike;
}

CheckFinding makeFinding(CheckedSheet const& sheet, CheckCode code, Rules const& rules,
                         std::string reason) {
  CheckFinding finding{.code = code,
                       .severity = kindOf(code).severity,
                       .sheet = sheet.getIndex(),
                       .reason = std::move(reason)};
  for (CheckedRule const* const rule : rules) {
    finding.rules.push_back(rule->rule->number);
    if (code == CheckCode::RuleFragments || rule == rules.front()) {
      finding.ranges.insert(finding.ranges.end(), rule->rule->ranges.begin(),
                            rule->rule->ranges.end());
    }
  }
  return finding;
}

/// Reports the rules of a group that also have equal ranges, and leaves one of each.
Rules reportDuplicates(CheckedSheet const& sheet, Rules const& alike,
                       std::vector<CheckFinding>& findings) {
  std::map<std::size_t, Rules> byRanges;
  for (CheckedRule const* const rule : alike) {
    byRanges[rule->ranges].push_back(rule);
  }
  Rules rest;
  for (auto const& [ranges, rules] : byRanges) {
    rest.push_back(rules.front());
    if (rules.size() > 1) {
      findings.push_back(makeFinding(sheet, CheckCode::DuplicateRules, rules,
                                     "condition, ranges, format and stop flag are equal"));
    }
  }
  return rest;
}

/// Sets of rules that grow together.
class RuleClusters {
public:
  explicit RuleClusters(std::size_t count) : _parents(count) {
    std::iota(_parents.begin(), _parents.end(), std::size_t{0});
  }
  void join(std::size_t a, std::size_t b) { _parents[find(a)] = find(b); }
  [[nodiscard]] std::size_t find(std::size_t rule) {
    while (_parents[rule] != rule) {
      rule = _parents[rule] = _parents[_parents[rule]];
    }
    return rule;
  }

private:
  std::vector<std::size_t> _parents;
};

/// Ranges by the edge at which another one would continue them: of the same columns below, or of
/// the same rows to the right.
using Edge = std::array<unsigned long, 3>;

/// Joins the rules of which a range continues a range of another one.
template <class FirstEdge, class LastEdge>
void joinAlong(Rules const& rules, RuleClusters& clusters, FirstEdge const& firstEdge,
               LastEdge const& lastEdge) {
  std::map<Edge, std::size_t> ends;
  for (std::size_t i = 0; i < rules.size(); ++i) {
    for (TableRange const& range : rules[i]->rule->ranges) {
      ends.emplace(lastEdge(range), i);
    }
  }
  for (std::size_t i = 0; i < rules.size(); ++i) {
    for (TableRange const& range : rules[i]->rule->ranges) {
      if (auto const found = ends.find(firstEdge(range)); found != ends.end()) {
        clusters.join(i, found->second);
      }
    }
  }
}

void reportFragments(CheckedSheet const& sheet, Rules const& rules,
                     std::vector<CheckFinding>& findings) {
  RuleClusters clusters(rules.size());
  joinAlong(
      rules, clusters,
      [](TableRange const& range) {
        return Edge{range.firstRow, range.firstColumn, range.endColumn};
      },
      [](TableRange const& range) {
        return Edge{range.endRow, range.firstColumn, range.endColumn};
      });
  joinAlong(
      rules, clusters,
      [](TableRange const& range) {
        return Edge{range.firstColumn, range.firstRow, range.endRow};
      },
      [](TableRange const& range) {
        return Edge{range.endColumn, range.firstRow, range.endRow};
      });
  std::map<std::size_t, Rules> fragments;
  for (std::size_t i = 0; i < rules.size(); ++i) {
    fragments[clusters.find(i)].push_back(rules[i]);
  }
  for (auto& [root, members] : fragments) {
    if (members.size() > 1) {
      std::ranges::sort(members, {}, [](CheckedRule const* rule) { return rule->rule->number; });
      findings.push_back(
          makeFinding(sheet, CheckCode::RuleFragments, members,
                      fmt::format("{} rules have the same condition, format and stop flag, and "
                                  "their ranges touch",
                                  members.size())));
    }
  }
}

}  // namespace

void addRepeatedRules(CheckedSheet const& sheet, StepCounter& steps,
                      std::vector<CheckFinding>& findings) {
  for (Rules const& alike : groupAlike(sheet)) {
    steps.count(alike.size());
    Rules const rest = reportDuplicates(sheet, alike, findings);
    if (rest.size() > 1 && !dependsOnRanges(rest.front()->getCondition())) {
      reportFragments(sheet, rest, findings);
    }
  }
}

}  // namespace Zorv::Analysis
