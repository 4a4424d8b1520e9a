#include "analysis/Tidy/WrittenRule.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>
#include <utility>

#include "workbook/Quote.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Analysis {

namespace {

using Workbook::Rule;

struct RuleElement {
  FormatMarkup const* format;
  RuleMarkup const* markup;
  bool isFirst = false;  ///< of a rule of the document
};

std::vector<RuleElement> listElements(std::vector<FormatMarkup> const& formats) {
  std::vector<RuleElement> elements;
  for (FormatMarkup const& format : formats) {
    for (RuleMarkup const& rule : format.rules) {
      elements.push_back({&format, &rule});
    }
  }
  return elements;
}

bool isOf(Rule const& rule, RuleElement const& element) {
  return rule.fromExtensionList == element.format->isExtension &&
         rule.rangeText == Workbook::quote(Workbook::trimXmlSpaces(element.format->rangesText)) &&
         rule.formulas.size() == element.markup->formulas.size();
}

bool comesBefore(WrittenRule const& a, WrittenRule const& b) {
  auto const rank = [](Rule const& rule) {
    return std::tuple(!rule.priority.has_value(), rule.priority.value_or(0), rule.number);
  };
  return rank(*a.rule) < rank(*b.rule);
}

}  // namespace

std::optional<std::vector<WrittenRule>> findWrittenRules(Workbook::Document const& document,
                                                         std::size_t sheet,
                                                         std::vector<FormatMarkup> const& formats) {
  auto const rules = document.getRulesOfSheet(sheet);
  std::vector<RuleElement> elements = listElements(formats);
  std::vector<WrittenRule> written;
  for (Rule const& rule : rules) {
    // The first element of a sheet is always the first one of a rule.
    std::size_t const index = rule.number - rules.front().number;
    if (index >= elements.size() || !isOf(rule, elements[index])) {
      return std::nullopt;
    }
    elements[index].isFirst = true;
    written.push_back({&rule, elements[index].format, elements[index].markup});
  }
  std::unordered_map<std::string, RuleElement const*> seconds;
  for (RuleElement const& element : elements) {
    if (!element.isFirst) {
      seconds.emplace(element.markup->extensionId, &element);
    }
  }
  for (WrittenRule& rule : written) {
    auto const second = seconds.find(rule.markup->extensionId);
    if (!rule.format->isExtension && second != seconds.end()) {
      rule.secondFormat = second->second->format;
      rule.secondMarkup = second->second->markup;
    }
  }
  std::ranges::sort(written, &comesBefore);
  return written;
}

}  // namespace Zorv::Analysis
