#include "analysis/Tidy/ClassifyRules.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>
#include <string_view>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "DOM/A1Notation.h"
#include "Formulas/WriteExpr.h"
#include "analysis/Tidy/AlwaysError.h"

namespace Zorv::Analysis {

namespace {

using Workbook::Rule;

/// Kinds of rules that look at one cell at a time.
constexpr std::array<std::string_view, 11> cellKinds{
    "expression",        "cellIs",         "containsText",     "notContainsText",
    "beginsWith",        "endsWith",       "timePeriod",       "containsBlanks",
    "notContainsBlanks", "containsErrors", "notContainsErrors"};

struct VisualKind {
  std::string_view name;
  std::uint64_t property;
};
constexpr std::array visualKinds{VisualKind{"colorScale", fillProperty},
                                 VisualKind{"dataBar", barProperty},
                                 VisualKind{"iconSet", iconProperty}};

VisualKind const* findVisualKind(Rule const& rule) noexcept {
  auto const* const found = std::ranges::find(visualKinds, rule.type, &VisualKind::name);
  return found == visualKinds.end() ? nullptr : found;
}

/// Numbers from 0 for different texts.
class TextNumbers {
public:
  [[nodiscard]] std::size_t numberOf(std::string const& text) {
    return _numbers.emplace(text, _numbers.size()).first->second;
  }

private:
  std::unordered_map<std::string, std::size_t> _numbers;
};

/// Numbers from 0 for different conditions: a text, and formulas.
class ConditionNumbers {
public:
  [[nodiscard]] std::size_t numberOf(std::string const& text, RuleFormulas::Exprs formulas) {
    std::string key = text;
    for (auto const& formula : formulas) {
      key += '\n';
      key += Formulas::writeExpr(formula);
    }
    auto& entries = _entries[key];
    auto const found = std::ranges::find(entries, formulas, &Entry::formulas);
    if (found != entries.end()) {
      return found->number;
    }
    entries.push_back({std::move(formulas), _count});
    return _count++;
  }

private:
  struct Entry {
    RuleFormulas::Exprs formulas;
    std::size_t number;
  };

  /// By the text and those of the formulas: equal formulas have equal texts.
  std::unordered_map<std::string, std::vector<Entry>> _entries;
  std::size_t _count = 0;
};

class Classifier {
public:
  Classifier(RuleFormulas const& formulas, DOM::Styles const& styles,
             std::vector<std::string> const& differentialFormats) noexcept
      : _formulas(formulas), _styles(styles), _differentialFormats(differentialFormats) {}

  [[nodiscard]] PlanRule classify(WrittenRule const& written) {
    Rule const& rule = *written.rule;
    VisualKind const* const visual = findVisualKind(rule);
    PlanRule plan;
    plan.ranges = rule.ranges;
    plan.effect.stops = rule.stopIfTrue;
    plan.effect.isUnknown = rule.format == nullptr && visual == nullptr;
    plan.mayJoin = std::ranges::find(cellKinds, rule.type) != cellKinds.end();
    auto formulas = _formulas.read(written);
    bool const isPlain = written.format->isPlain &&
                         (written.secondFormat == nullptr || written.secondFormat->isPlain);
    plan.isFixed = plan.effect.isUnknown || !isPlain || !formulas || rule.ranges.empty();
    if (visual != nullptr) {
      plan.effect.properties = visual->property;
    } else if (!plan.effect.isUnknown) {
      plan.effect.properties = findStyleProperties(rule);
    }
    // The list of the extension must not become empty, so that its rules stay.
    plan.neverHolds = rule.type == "expression" && !written.format->isExtension && formulas &&
                      formulas->size() == 1 && isAlwaysError(formulas->front());
    std::string const condition = describeCondition(written, plan.mayJoin);
    plan.effect.look = _looks.numberOf(describeLook(written, plan, condition));
    plan.condition =
        _conditions.numberOf(condition, std::move(formulas).value_or(RuleFormulas::Exprs()));
    return plan;
  }

private:
  [[nodiscard]] std::uint64_t findStyleProperties(Rule const& rule) const {
    auto const found = _styles.getTableStyles().find(rule.format->getStyleUUID());
    return found == _styles.getTableStyles().end() ? 0 : findProperties(found->second);
  }

  /// Equal for rules with the same condition, apart from their formulas.
  [[nodiscard]] static std::string describeCondition(WrittenRule const& written, bool mayJoin) {
    std::string text = written.markup->content;
    if (!mayJoin) {
      text += '\n';
      text += describeRanges(written.rule->ranges);
      for (std::string const& formula : written.rule->formulas) {
        text += '\n';
        text += formula;
      }
    }
    if (written.secondMarkup != nullptr) {
      text += '\n';
      text += written.secondFormat->rangesText;
      text += '\n';
      text += written.secondMarkup->content;
    } else if (!written.format->isExtension) {
      // An identity that leads nowhere is known to be the same only as a text.
      text += written.markup->extensionId;
    }
    return text;
  }

  [[nodiscard]] static std::string describeRanges(RangeSet ranges) {
    std::ranges::sort(ranges, {}, [](TableRange const& range) {
      return std::tuple(range.firstRow, range.firstColumn, range.endRow, range.endColumn);
    });
    return DOM::A1Notation::toAddress(ranges);
  }

  /// Equal for rules that do the same to a cell for which they hold. What is inside the element, a
  /// format or a visual, is part of the condition's text.
  [[nodiscard]] std::string describeLook(WrittenRule const& written, PlanRule const& plan,
                                         std::string const& condition) const {
    auto const& index = written.markup->formatIndex;
    if (findVisualKind(*written.rule) != nullptr || (plan.effect.properties != 0 && !index)) {
      return "in " + condition;
    }
    return index ? findDifferentialFormat(*index) : std::string();
  }

  [[nodiscard]] std::string findDifferentialFormat(std::string const& index) const {
    std::size_t place = 0;
    auto const* const end = index.data() + index.size();
    auto const [rest, error] = std::from_chars(index.data(), end, place);
    bool const isKnown = error == std::errc() && rest == end && place < _differentialFormats.size();
    return isKnown ? _differentialFormats[place] : "no format " + index;
  }

  RuleFormulas const& _formulas;
  DOM::Styles const& _styles;
  std::vector<std::string> const& _differentialFormats;
  TextNumbers _looks;
  ConditionNumbers _conditions;
};

}  // namespace

std::vector<PlanRule> classifyRules(std::vector<WrittenRule> const& rules,
                                    RuleFormulas const& formulas, DOM::Styles const& styles,
                                    std::vector<std::string> const& differentialFormats) {
  Classifier classifier(formulas, styles, differentialFormats);
  std::vector<PlanRule> plan;
  plan.reserve(rules.size());
  for (WrittenRule const& rule : rules) {
    plan.push_back(classifier.classify(rule));
  }
  return plan;
}

}  // namespace Zorv::Analysis
