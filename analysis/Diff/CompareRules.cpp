#include "analysis/Diff/CompareRules.h"

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <tuple>
#include <unordered_map>
#include <utility>

#include <boost/functional/hash.hpp>

#include "DOM/A1Notation.h"
#include "DOM/CellStyle.h"
#include "analysis/Diff/VisualForm.h"
#include "analysis/Shared/ConditionKey.h"
#include "workbook/Ranges.h"

namespace Zorv::Analysis {

namespace {

using Workbook::Document;
using Workbook::Rule;

constexpr std::size_t noPartner = static_cast<std::size_t>(-1);

/// A rule with what is compared of it.
struct RuleEntry {
  Rule const* rule = nullptr;
  std::size_t condition = 0;
  std::string ranges;
  std::size_t style = 0;
  VisualForm visual;
  std::size_t partner = noPartner;  ///< index in the other version
  bool hasMoved = false;
};
using RuleEntries = std::vector<RuleEntry>;

/// Properties that a rule's named style sets; nothing for a rule that is not resolved.
DOM::CellStyle styleOfRule(Document const& document, Rule const& rule) {
  DOM::CellStyle style;
  if (rule.format != nullptr) {
    auto const& styles = document.getStyles().getTableStyles();
    if (auto const found = styles.find(rule.format->getStyleUUID()); found != styles.end()) {
      style.setRunProps(found->second.getRunProps());
      style.setParaProps(found->second.getParaProps());
      style.setCellProps(found->second.getCellProps());
      style.setCellFormat(found->second.getCellFormat());
    }
  }
  return style;
}

/// Equal for rules whose conditions say the same on each cell; for visual rules of one kind.
std::string makeKey(Rule const& rule) {
  std::string key = rule.type + ' ' + rule.operatorText + ' ';
  if (rule.format != nullptr) {
    return key + makeConditionKey(rule.format->getOperator(), Workbook::findBaseCell(rule.ranges));
  }
  key += rule.visual != nullptr ? "drawn" : "not resolved";
  for (std::string const& formula : rule.formulas) {
    key += '\n';
    key += formula;
  }
  return key;
}

/// Makes entries of the rules of two versions, with numbers that both share.
class RuleEntryMaker {
public:
  [[nodiscard]] RuleEntries make(Document const& document, std::size_t sheet) {
    RuleEntries entries;
    for (Rule const& rule : document.getRulesOfSheet(sheet)) {
      entries.push_back(
          {.rule = &rule,
           .condition = _conditions.emplace(makeKey(rule), _conditions.size()).first->second,
           .ranges = rule.ranges.empty() ? rule.rangeText : DOM::A1Notation::toAddress(rule.ranges),
           .style = findStyleId(styleOfRule(document, rule)),
           .visual = rule.visual != nullptr ? makeVisualForm(rule.visual->kind) : VisualForm()});
    }
    std::ranges::stable_sort(entries, {}, [](RuleEntry const& entry) {
      return std::tuple(!entry.rule->priority.has_value(), entry.rule->priority.value_or(0));
    });
    return entries;
  }

private:
  struct StyleHash {
    std::size_t operator()(DOM::CellStyle const& style) const noexcept { return hash_value(style); }
  };

  std::size_t findStyleId(DOM::CellStyle style) {
    return _styles.emplace(std::move(style), _styles.size()).first->second;
  }

  std::unordered_map<std::string, std::size_t> _conditions;  ///< by key
  std::unordered_map<DOM::CellStyle, std::size_t, StyleHash> _styles;
};

/// Makes partners of entries that have no partner yet and give the same key, in their order.
template <class MakeKey>
void matchBy(MakeKey const& makeKey, RuleEntries& first, RuleEntries& second) {
  std::map<decltype(makeKey(first.front())), std::vector<std::size_t>> waiting;
  for (std::size_t at = second.size(); at-- > 0;) {
    if (second[at].partner == noPartner) {
      waiting[makeKey(second[at])].push_back(at);
    }
  }
  for (std::size_t at = 0; at < first.size(); ++at) {
    auto const found =
        first[at].partner == noPartner ? waiting.find(makeKey(first[at])) : waiting.end();
    if (found != waiting.end() && !found->second.empty()) {
      first[at].partner = found->second.back();
      second[found->second.back()].partner = at;
      found->second.pop_back();
    }
  }
}

/// Marks the fewest entries without which the others are in the same order in both versions: those
/// outside a longest ascending sequence of partners.
void markMoved(RuleEntries& entries) {
  std::vector<std::size_t> ends;  // of sequences by their length: the entry with the least partner
  std::vector<std::size_t> before(entries.size(), noPartner);
  for (std::size_t at = 0; at < entries.size(); ++at) {
    if (entries[at].partner == noPartner) {
      continue;
    }
    entries[at].hasMoved = true;
    auto const place = std::ranges::lower_bound(
        ends, entries[at].partner, {}, [&](std::size_t end) { return entries[end].partner; });
    if (place != ends.begin()) {
      before[at] = *(place - 1);
    }
    if (place == ends.end()) {
      ends.push_back(at);
    } else {
      *place = at;
    }
  }
  for (std::size_t at = ends.empty() ? noPartner : ends.back(); at != noPartner; at = before[at]) {
    entries[at].hasMoved = false;
  }
}

/// The difference between an entry and its partner, if there is one.
std::optional<RuleDifference> compareEntries(RuleEntry const& first, RuleEntry const& second) {
  RuleDifference difference{
      .first = first.rule,
      .second = second.rule,
      .aspects = {.ranges = first.ranges != second.ranges,
                  .style = first.style != second.style,
                  .stop = first.rule->stopIfTrue != second.rule->stopIfTrue,
                  .thresholds = first.visual.thresholds != second.visual.thresholds,
                  .colours = first.visual.colours != second.visual.colours,
                  .icons = first.visual.icons != second.visual.icons,
                  .drawing = first.visual.drawing != second.visual.drawing}};
  if (difference.aspects == RuleAspects()) {
    difference.change = RuleChange::Moved;
    return first.hasMoved ? std::optional(difference) : std::nullopt;
  }
  return difference;
}

}  // namespace

std::vector<RuleDifference> compareRules(Document const& first, std::size_t firstSheet,
                                         Document const& second, std::size_t secondSheet) {
  RuleEntryMaker maker;
  RuleEntries before = maker.make(first, firstSheet);
  RuleEntries after = maker.make(second, secondSheet);
  if (!before.empty()) {
    matchBy(
        [](RuleEntry const& entry) {
          return std::tuple(entry.condition, entry.style, entry.rule->stopIfTrue, entry.ranges,
                            entry.visual);
        },
        before, after);
    matchBy([](RuleEntry const& entry) { return std::tuple(entry.condition, entry.ranges); },
            before, after);
    matchBy([](RuleEntry const& entry) { return std::tuple(entry.condition, entry.visual); },
            before, after);
    matchBy([](RuleEntry const& entry) { return entry.condition; }, before, after);
    markMoved(before);
  }
  std::vector<RuleDifference> differences;
  for (RuleEntry const& entry : before) {
    if (entry.partner == noPartner) {
      differences.push_back({.change = RuleChange::Removed, .first = entry.rule});
    } else if (auto const difference = compareEntries(entry, after[entry.partner])) {
      differences.push_back(*difference);
    }
  }
  for (RuleEntry const& entry : after) {
    if (entry.partner == noPartner) {
      differences.push_back({.change = RuleChange::Added, .second = entry.rule});
    }
  }
  return differences;
}

}  // namespace Zorv::Analysis
