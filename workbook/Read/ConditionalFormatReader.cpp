#include "workbook/Read/ConditionalFormatReader.h"

#include <algorithm>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/RuleCondition.h"
#include "workbook/Read/Values.h"
#include "workbook/Widespread.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

/// The name without the prefix of its namespace.
std::string_view localName(pugi::xml_node node) noexcept {
  std::string_view const name = node.name();
  return name.substr(name.find(':') + 1);
}

/// The formulas directly in a rule: `formula`, or `xm:f` in the extension list.
std::vector<std::string> readFormulas(pugi::xml_node rule) {
  std::vector<std::string> formulas;
  for (pugi::xml_node const child : rule) {
    std::string_view const name = localName(child);
    if (name == "formula" || name == "f") {
      formulas.push_back(unescapeXstring(trimXmlSpaces(child.text().get())));
    }
  }
  return formulas;
}

std::optional<int> readPriority(pugi::xml_node rule) {
  auto const priority = parseInteger(rule.attribute("priority").value());
  bool const fits = priority && std::numeric_limits<int>::min() <= *priority &&
                    *priority <= std::numeric_limits<int>::max();
  return fits ? std::optional(static_cast<int>(*priority)) : std::nullopt;
}

/// Adds the identities of a rule's parts in the extension list: `x14:id` in its own extensions.
void noteExtensionIds(pugi::xml_node rule, std::set<std::string, std::less<>>& ids) {
  for (pugi::xml_node const extension : rule.child("extLst").children("ext")) {
    std::string_view const id = trimXmlSpaces(extension.child("x14:id").text().get());
    if (!id.empty()) {
      ids.emplace(id);
    }
  }
}

}  // namespace

void ConditionalFormatReader::read(pugi::xml_node conditionalFormatting) {
  bool const isExtension = conditionalFormatting.name() != localName(conditionalFormatting);
  std::string_view const ruleName = isExtension ? "x14:cfRule" : "cfRule";
  std::string rangeText = conditionalFormatting.attribute("sqref").value();
  std::vector<pugi::xml_node> rules;
  std::size_t unknownCount = 0;
  for (pugi::xml_node const child : conditionalFormatting) {
    if (child.name() == ruleName) {
      rules.push_back(child);
    } else if (localName(child) == "sqref") {
      rangeText = child.text().get();
    } else if (localName(child) == "cfRule") {
      ++unknownCount;
    }
  }
  _hasReadRules = _hasReadRules || !rules.empty();
  rangeText = trimXmlSpaces(std::string(rangeText));
  auto const ranges = DOM::A1Notation::parseRanges(rangeText);
  rangeText = quote(rangeText);
  if (unknownCount > 0) {
    Sheet const& sheet = _state.document.getSheets()[_sheet];
    _state.document.addFinding(
        {sheet.part, sheet.name, rangeText,
         fmt::format("{} of a namespace that does not belong here {} left out",
                     unknownCount == 1 ? "a rule" : fmt::format("{} rules", unknownCount),
                     unknownCount == 1 ? "is" : "are")});
  }
  for (pugi::xml_node const element : rules) {
    Rule rule;
    rule.number = _state.ruleCount++;
    rule.sheet = _sheet;
    rule.fromExtensionList = isExtension;
    rule.rangeText = rangeText;
    rule.ranges = ranges.value_or(std::vector<TableRange>());
    checkLimits(rule);
    if (!isExtension || !joinsEarlierRule(element)) {
      readRule(element, std::move(rule));
    }
  }
}

void ConditionalFormatReader::finish() {
  auto const rank = [](Entry const& entry) {
    return std::tuple(!entry.priority.has_value(), entry.priority.value_or(0));
  };
  std::stable_sort(_entries.begin(), _entries.end(),
                   [&rank](Entry const& a, Entry const& b) { return rank(a) < rank(b); });
  DOM::Table::LiveConditionalFormats formats;
  formats.reserve(_entries.size());
  for (Entry& entry : _entries) {
    formats.push_back(std::move(entry.format));
  }
  _state.document.getSheets()[_sheet].table->setConditionalFormats(std::move(formats));
  _entries.clear();
}

void ConditionalFormatReader::readRule(pugi::xml_node element, Rule rule) {
  rule.type = element.attribute("type").value();
  rule.operatorText = element.attribute("operator").value();
  rule.priority = readPriority(element);
  rule.stopIfTrue = parseBoolean(element.attribute("stopIfTrue").value()).value_or(false);
  rule.formulas = readFormulas(element);
  rule.needleFormula = findNeedleFormula(element, rule.formulas);
  if (isVisual(rule.type)) {
    noteExtensionIds(element, _extensionIds);
  }
  checkAttributes(element, rule);
  Sheet const& sheet = _state.document.getSheets()[_sheet];
  for (std::string const& formula : rule.formulas) {
    _state.countFormula(formula, sheet.part);
  }
  try {
    auto format = makeFormat(element, rule);
    rule.format = format.get();
    _entries.push_back({rule.priority, std::move(format)});
  } catch (UnresolvedRule const& reason) {
    rule.unresolvedReason = reason.what();
  }
  _state.document.getRules().push_back(std::move(rule));
}

/// Each identity is used once: a second element of the same identity is a rule of its own.
bool ConditionalFormatReader::joinsEarlierRule(pugi::xml_node extensionRule) {
  return isVisual(extensionRule.attribute("type").value()) &&
         _extensionIds.erase(extensionRule.attribute("id").value()) > 0;
}

std::unique_ptr<DOM::ConditionalFormat const> ConditionalFormatReader::makeFormat(
    pugi::xml_node element, Rule const& rule) {
  auto condition = readCondition(element, rule.formulas);
  if (rule.ranges.empty()) {
    throw UnresolvedRule(rule.rangeText.empty()
                             ? "the rule has no range"
                             : fmt::format("\"{}\" is no range of the sheet", rule.rangeText));
  }
  if (_state.semantics == Semantics::Widespread) {
    condition = toWidespread(std::move(condition), rule);
  }
  DOM::Table const& table = *_state.document.getSheets()[_sheet].table;
  std::vector<DOM::TableRangeByID> ranges;
  ranges.reserve(rule.ranges.size());
  std::transform(rule.ranges.begin(), rule.ranges.end(), std::back_inserter(ranges),
                 [&table](TableRange const& range) { return table.toRangeByID(range); });
  return std::make_unique<DOM::ConditionalFormat const>(std::move(ranges), std::move(condition),
                                                        findStyle(element, rule), rule.stopIfTrue);
}

DOM::ConditionalFormatOperator ConditionalFormatReader::toWidespread(
    DOM::ConditionalFormatOperator condition, Rule const& rule) {
  auto widespread = findWidespread(condition, rule);
  if (widespread) {
    // It is kept parsed like the formulas of the file.
    _state.countFormula(widespread->formula, _state.document.getSheets()[_sheet].part);
    return DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                               std::move(widespread->expr));
  }
  if (!isFormula(condition)) {
    addFinding(rule,
               "has too many ranges, or too long a formula, for a formula that says what other "
               "programs do; it is resolved by the library's own semantics");
  }
  return condition;
}

/// The nil identity for a rule without a differential format, which sets no style.
UUID ConditionalFormatReader::findStyle(pugi::xml_node element, Rule const& rule) {
  if (pugi::xml_node const inlineFormat =
          element.find_child([](pugi::xml_node child) { return localName(child) == "dxf"; })) {
    return _styles.addDifferentialStyle(inlineFormat,
                                        fmt::format("differential format of rule {}", rule.number));
  }
  pugi::xml_attribute const attribute = element.attribute("dxfId");
  if (!attribute) {
    return {};
  }
  auto const index = parseInteger(attribute.value());
  UUID const style = index && *index >= 0
                         ? _styles.getDifferentialStyle(static_cast<std::size_t>(*index))
                         : UUID();
  if (style.isEmpty()) {
    addFinding(rule,
               fmt::format("refers to the differential format \"{}\", which the file does not "
                           "have; it styles nothing",
                           quote(attribute.value())));
  }
  return style;
}

/// Tells attributes whose values are none of those that ISO/IEC 29500-1, 18.3.1.10 allows.
void ConditionalFormatReader::checkAttributes(pugi::xml_node element, Rule const& rule) {
  if (auto const priority = element.attribute("priority"); priority && !rule.priority) {
    addFinding(rule,
               fmt::format("has the priority \"{}\", which is no whole number; it counts as a "
                           "rule without a priority, and these come last",
                           quote(priority.value())));
  }
  for (char const* name : {"stopIfTrue", "aboveAverage", "percent", "bottom", "equalAverage"}) {
    pugi::xml_attribute const flag = element.attribute(name);
    if (flag && !parseBoolean(flag.value())) {
      addFinding(
          rule, fmt::format("has {}=\"{}\", which is neither true nor false; it counts as {}", name,
                            quote(flag.value()),
                            std::string_view(name) == "aboveAverage" ? "true" : "false"));
    }
  }
  if (auto const deviations = element.attribute("stdDev");
      deviations && !parseInteger(deviations.value())) {
    addFinding(rule, fmt::format("has stdDev=\"{}\", which is no whole number; it counts as 0",
                                 quote(deviations.value())));
  }
}

void ConditionalFormatReader::addFinding(Rule const& rule, std::string message) {
  Sheet const& sheet = _state.document.getSheets()[_sheet];
  _state.document.addFinding({sheet.part, sheet.name, rule.rangeText,
                              fmt::format("rule {} {}", rule.number, std::move(message))});
}

void ConditionalFormatReader::checkLimits(Rule const& rule) {
  Sheet const& sheet = _state.document.getSheets()[_sheet];
  _state.ruleAreaCount += rule.ranges.size();
  _state.memory.take(sizeof(Rule) + sizeof(DOM::ConditionalFormat) +
                     rule.ranges.size() * (sizeof(TableRange) + sizeof(DOM::TableRangeByID)));
  if (rule.number >= _state.limits.rules) {
    throw PartError(sheet.part, fmt::format("range {}", rule.rangeText),
                    fmt::format("the file has more than {} conditional-formatting rules, which is "
                                "the limit",
                                _state.limits.rules));
  }
  if (_state.ruleAreaCount > _state.limits.ruleAreas) {
    throw PartError(sheet.part, {},
                    fmt::format("the conditional-formatting rules have more than {} areas, which "
                                "is the limit",
                                _state.limits.ruleAreas));
  }
}

}  // namespace Zorv::Workbook
