#include "analysis/Check/HiddenVisuals.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <unordered_map>

#include "analysis/Shared/RangeSets.h"
#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

/// Most earlier rules that are compared with one rule.
constexpr std::size_t mostEarlierRules = 1'000;
constexpr std::size_t mostEarlierRanges = 10'000;
constexpr std::uint64_t mostVisualComparisons = 1'000'000;

/// The visual rules of a sheet by priority.
std::vector<Workbook::Rule const*> listVisualRules(CheckedSheet const& sheet) {
  std::unordered_map<Visuals::VisualFormat const*, std::size_t> places;
  for (auto const& format : sheet.getSheet().visualFormats) {
    places.emplace(format.get(), places.size());
  }
  std::vector<Workbook::Rule const*> rules(places.size());
  for (Workbook::Rule const* const rule : sheet.getAllRules()) {
    if (rule->visual != nullptr) {
      rules[places.at(rule->visual)] = rule;
    }
  }
  std::erase(rules, nullptr);  // a format of a damaged file may be no rule's any more
  return rules;
}

/// Looks for what hides the visual rules of a sheet.
class HiddenVisualFinder {
public:
  HiddenVisualFinder(CheckedSheet const& sheet, std::span<CheckedRule const* const> always,
                     StepCounter& steps)
      : _sheet(sheet), _always(always), _steps(steps), _rules(listVisualRules(sheet)) {}

  void run(std::vector<CheckFinding>& findings) {
    for (std::size_t place = 0; place < _rules.size(); ++place) {
      Workbook::Rule const& rule = *_rules[place];
      findCover(place);
      if (covers(_cover, rule.ranges, _steps, mostVisualComparisons)) {
        _coverRules.insert(_coverRules.begin(), rule.number);
        findings.push_back({.code = CheckCode::HiddenRule,
                            .severity = kindOf(CheckCode::HiddenRule).severity,
                            .sheet = _sheet.getIndex(),
                            .ranges = rule.ranges,
                            .rules = _coverRules,
                            .reason = "on all its cells they draw the same kind, or stop"});
      }
    }
  }

private:
  void findCover(std::size_t place) {
    Workbook::Rule const& rule = *_rules[place];
    _cover.clear();
    _coverRules.clear();
    _bounds = Workbook::findBounds(rule.ranges);
    for (std::size_t at = place - std::min(place, mostEarlierRules); at < place; ++at) {
      Visuals::VisualFormat const& earlier = *_rules[at]->visual;
      if (earlier.kind.index() == rule.visual->kind.index() && !earlier.condition) {
        add(*_rules[at]);
      }
    }
    for (CheckedRule const* const earlier : _always) {
      auto const format = static_cast<std::size_t>(earlier - _sheet.getRules().data());
      if (format >= rule.visual->formatsBefore) {
        break;
      }
      if (earlier->rule->stopIfTrue) {
        add(*earlier->rule);
      }
    }
  }

  void add(Workbook::Rule const& earlier) {
    std::size_t const before = _cover.size();
    _steps.count(earlier.ranges.size());
    if (before + earlier.ranges.size() > mostEarlierRanges) {
      return;
    }
    std::ranges::copy_if(
        earlier.ranges, std::back_inserter(_cover),
        [this](TableRange const& range) { return !intersect(range, _bounds).isEmpty(); });
    if (_cover.size() > before) {
      _coverRules.push_back(earlier.number);
    }
  }

  CheckedSheet const& _sheet;
  std::span<CheckedRule const* const> _always;
  StepCounter& _steps;
  std::vector<Workbook::Rule const*> _rules;
  RangeSet _cover;  ///< of the rule in question: where earlier ones leave nothing to it
  std::vector<std::size_t> _coverRules;
  TableRange _bounds;
};

}  // namespace

void addHiddenVisuals(CheckedSheet const& sheet, std::span<CheckedRule const* const> always,
                      StepCounter& steps, std::vector<CheckFinding>& findings) {
  HiddenVisualFinder(sheet, always, steps).run(findings);
}

}  // namespace Zorv::Analysis
