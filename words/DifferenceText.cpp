#include "words/DifferenceText.h"

#include <utility>
#include <vector>

#include <fmt/format.h>

#include "words/ConditionText.h"
#include "words/RuleEffect.h"
#include "words/StyleText.h"
#include "words/VisualText.h"

namespace Zorv::Words {

namespace {

using Analysis::RuleAspects;
using Analysis::RuleChange;
using Analysis::RuleDifference;
using Workbook::Rule;

std::string describeEffectOf(Workbook::Document const& document, Rule const& rule) {
  return rule.isResolved() ? describeEffect(document, rule) : rule.unresolvedReason;
}

std::string describeAspects(Workbook::Document const& document, Rule const& rule,
                            RuleAspects const& aspects) {
  std::vector<std::string> texts;
  if (aspects.ranges) {
    texts.push_back(describeRanges(rule));
  }
  if (aspects.style) {
    texts.push_back(describeEffectOf(document, rule));
  }
  if (aspects.stop) {
    texts.emplace_back(rule.stopIfTrue ? "stops" : "does not stop");
  }
  if (aspects.thresholds) {
    texts.push_back(describeThresholds(rule.visual->kind));
  }
  if (aspects.colours || aspects.icons || aspects.drawing) {
    texts.push_back(describeWholeDrawing(rule.visual->kind));
  }
  return fmt::format("{}", fmt::join(texts, "; "));
}

}  // namespace

std::string describeChange(RuleDifference const& difference) {
  switch (difference.change) {
    case RuleChange::Added:
      return "added";
    case RuleChange::Removed:
      return "removed";
    case RuleChange::Moved:
      return "moved";
    case RuleChange::Changed:
      break;
  }
  RuleAspects const& aspects = difference.aspects;
  std::vector<std::string> names;
  for (auto const& [differs, name] :
       {std::pair(aspects.ranges, "ranges"), std::pair(aspects.style, "style"),
        std::pair(aspects.stop, "stop"), std::pair(aspects.thresholds, "thresholds"),
        std::pair(aspects.colours, "colours"), std::pair(aspects.icons, "icons"),
        std::pair(aspects.drawing, "drawing")}) {
    if (differs) {
      names.emplace_back(name);
    }
  }
  return fmt::format("{}", fmt::join(names, ", "));
}

std::string describeSide(Workbook::Document const& document, Rule const* rule,
                         RuleDifference const& difference) {
  if (rule == nullptr) {
    return "-";
  }
  switch (difference.change) {
    case RuleChange::Changed:
      return describeAspects(document, *rule, difference.aspects);
    case RuleChange::Moved:
      return rule->priority ? fmt::format("priority {}", *rule->priority) : "no priority";
    default:
      return fmt::format("{}: {}", describeRanges(*rule), describeEffectOf(document, *rule));
  }
}

std::string describeLook(Analysis::CellLook const& look) {
  if (look.hasFailed) {
    return "cannot be evaluated";
  }
  std::string const visuals = describe(look.visuals);
  if (!look.style) {
    return visuals.empty() ? "-" : visuals;
  }
  return describe(look.style->get()) + (visuals.empty() ? "" : ", " + visuals);
}

}  // namespace Zorv::Words
