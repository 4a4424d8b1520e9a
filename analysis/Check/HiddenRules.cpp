#include "analysis/Check/HiddenRules.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include <fmt/format.h>

#include "analysis/Check/ConditionFate.h"
#include "analysis/Check/HiddenVisuals.h"
#include "analysis/Check/ValueDomain.h"
#include "analysis/Shared/RangeSets.h"
#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

using Ranges = std::vector<TableRange>;

/// Earlier rules that are compared with a rule, at most.
constexpr std::size_t mostComparedRules = 1'000;
/// Ranges of earlier rules that are compared with those of one rule, at most.
constexpr std::size_t mostRanges = 10'000;
constexpr std::uint64_t mostRangeComparisons = 1'000'000;

/// Properties that earlier rules take from a rule, and which rules they are.
class Shadow {
public:
  /// The rule holds wherever the later one does.
  void add(CheckedRule const& earlier) {
    auto const& ranges = earlier.rule->ranges;
    auto const addTo = [&](Ranges& cover) {
      if (cover.size() + ranges.size() <= mostRanges) {
        cover.insert(cover.end(), ranges.begin(), ranges.end());
      }
    };
    if (earlier.rule->stopIfTrue) {
      addTo(_stopped);
    }
    for (std::string_view const property : earlier.properties) {
      addTo(_taken[property]);
    }
    _rules.push_back(earlier.rule->number);
  }

  [[nodiscard]] std::vector<std::size_t> const& getRules() const noexcept { return _rules; }

  [[nodiscard]] bool stops(CheckedRule const& rule, StepCounter& steps) const {
    return covers(_stopped, rule.rule->ranges, steps, mostRangeComparisons);
  }

  /// True if nothing that the rule sets is left to it.
  [[nodiscard]] bool takesAllOf(CheckedRule const& rule, StepCounter& steps) const {
    return std::ranges::all_of(rule.properties, [&](std::string_view property) {
      auto const found = _taken.find(property);
      Ranges cover = _stopped;
      if (found != _taken.end()) {
        cover.insert(cover.end(), found->second.begin(), found->second.end());
      }
      return covers(cover, rule.rule->ranges, steps, mostRangeComparisons);
    });
  }

private:
  Ranges _stopped;
  std::map<std::string_view, Ranges> _taken;
  std::vector<std::size_t> _rules;
};

/// Goes through the rules of a sheet by priority.
class HiddenRuleFinder {
public:
  HiddenRuleFinder(CheckedSheet const& sheet, Formulas::ContextProvider const& provider,
                   StepCounter& steps, std::vector<CheckFinding>& findings) noexcept
      : _sheet(sheet), _provider(provider), _steps(steps), _findings(findings) {}

  void run() {
    for (CheckedRule const& rule : _sheet.getRules()) {
      auto const fate = findFate(rule, _sheet, _provider, _steps);
      ValueDomain domain = findDomain(rule, _sheet, _provider);
      bool const isDead = fate && !fate->holds;
      if (!isDead) {
        check(rule, domain);
      }
      add({&rule, std::move(domain)}, fate && fate->holds, isDead);
    }
    addHiddenVisuals(_sheet, _always, _steps, _findings);
  }

private:
  struct Earlier {
    CheckedRule const* rule;
    ValueDomain domain;
  };

  void add(Earlier earlier, bool isAlways, bool isDead) {
    if (isDead) {
      return;
    }
    if (isAlways) {
      _always.push_back(earlier.rule);
    } else if (std::holds_alternative<std::monostate>(earlier.domain)) {
      _byCondition[earlier.rule->condition].push_back(earlier.rule);
    } else {
      _byDomain.push_back(std::move(earlier));
    }
  }

  void check(CheckedRule const& rule, ValueDomain const& domain) {
    if (rule.properties.empty() && !stopsSomething(rule)) {
      report(CheckCode::NoEffect, rule, {},
             rule.rule->stopIfTrue ? "it sets no property, and no later rule shares a cell with it"
                                   : "it sets no property and stops no other rule");
      return;
    }
    Shadow const shadow = findShadow(rule, domain);
    _steps.count(shadow.getRules().size() * (1 + rule.properties.size()));
    if (shadow.stops(rule, _steps)) {
      report(CheckCode::HiddenRule, rule, shadow.getRules(), "they stop wherever it holds");
    } else if (!rule.properties.empty() && !rule.rule->stopIfTrue &&
               shadow.takesAllOf(rule, _steps)) {
      report(CheckCode::HiddenRule, rule, shadow.getRules(),
             "they set the same properties wherever it holds");
    }
  }

  /// The earlier rules that hold wherever this one does. Equal rules are found elsewhere.
  [[nodiscard]] Shadow findShadow(CheckedRule const& rule, ValueDomain const& domain) {
    Shadow shadow;
    auto const add = [&](CheckedRule const& earlier) {
      if (sharesCell(earlier, rule) && !areRepeated(earlier, rule)) {
        shadow.add(earlier);
      }
    };
    for (CheckedRule const* const earlier : latestOf(_always)) {
      add(*earlier);
    }
    if (auto const found = _byCondition.find(rule.condition); found != _byCondition.end()) {
      for (CheckedRule const* const earlier : latestOf(found->second)) {
        add(*earlier);
      }
    }
    if (!std::holds_alternative<std::monostate>(domain)) {
      for (Earlier const& earlier : latestOf(_byDomain)) {
        if (isInside(domain, earlier.domain)) {
          add(*earlier.rule);
        }
      }
    }
    return shadow;
  }

  template <class Rules>
  [[nodiscard]] std::span<typename Rules::value_type const> latestOf(Rules const& rules) {
    std::size_t const count = std::min(rules.size(), mostComparedRules);
    _steps.count(1 + count);
    return std::span(rules).last(count);
  }

  /// May be true, too, for rules of very many ranges that lie among each other.
  [[nodiscard]] bool sharesCell(CheckedRule const& a, CheckedRule const& b) {
    constexpr std::size_t mostPairs = 1'000'000;
    auto const& ranges = a.rule->ranges;
    auto const& others = b.rule->ranges;
    if (intersect(findBounds(ranges), findBounds(others)).isEmpty()) {
      return false;
    }
    if (others.size() > mostPairs / std::max<std::size_t>(ranges.size(), 1)) {
      return true;
    }
    _steps.count(ranges.size() * others.size());
    return std::ranges::any_of(ranges, [&](TableRange const& one) {
      return std::ranges::any_of(
          others, [&](TableRange const& other) { return !intersect(one, other).isEmpty(); });
    });
  }

  [[nodiscard]] TableRange findBounds(Ranges const& ranges) {
    _steps.count(ranges.size());
    return Workbook::findBounds(ranges);
  }

  [[nodiscard]] static bool areRepeated(CheckedRule const& a, CheckedRule const& b) {
    return a.condition == b.condition && a.style == b.style &&
           a.rule->stopIfTrue == b.rule->stopIfTrue && a.ranges == b.ranges;
  }

  /// Rules that draw on cells, which are no formats, may be stopped, too.
  [[nodiscard]] bool stopsSomething(CheckedRule const& rule) {
    _steps.count(_sheet.getAllRules().size());
    auto const rank = [](Workbook::Rule const& one) {
      return std::tuple(!one.priority.has_value(), one.priority.value_or(0), one.number);
    };
    return rule.rule->stopIfTrue &&
           std::ranges::any_of(_sheet.getAllRules(), [&](Workbook::Rule const* other) {
             return rank(*rule.rule) < rank(*other) && sharesCell(CheckedRule{.rule = other}, rule);
           });
  }

  void report(CheckCode code, CheckedRule const& rule, std::vector<std::size_t> const& others,
              std::string reason) {
    CheckFinding finding{.code = code,
                         .severity = kindOf(code).severity,
                         .sheet = _sheet.getIndex(),
                         .ranges = rule.rule->ranges,
                         .rules = {rule.rule->number},
                         .reason = std::move(reason)};
    finding.rules.insert(finding.rules.end(), others.begin(), others.end());
    _findings.push_back(std::move(finding));
  }

  CheckedSheet const& _sheet;
  Formulas::ContextProvider const& _provider;
  StepCounter& _steps;
  std::vector<CheckFinding>& _findings;
  std::vector<CheckedRule const*> _always;
  std::unordered_map<std::size_t, std::vector<CheckedRule const*>> _byCondition;
  std::vector<Earlier> _byDomain;
};

}  // namespace

void addHiddenRules(CheckedSheet const& sheet, Formulas::ContextProvider const& provider,
                    StepCounter& steps, std::vector<CheckFinding>& findings) {
  HiddenRuleFinder(sheet, provider, steps, findings).run();
}

}  // namespace Zorv::Analysis
