#include "workbook/Read/ConditionalFormatReader.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "workbook/Package/PartError.h"
#include "workbook/Quote.h"
#include "workbook/Read/RuleCondition.h"
#include "workbook/Read/RuleElement.h"
#include "workbook/Read/Values.h"
#include "workbook/Read/VisualReader.h"
#include "workbook/Widespread.h"
#include "workbook/Xml/XmlText.h"
#include "workbook/Xml/XmlTree.h"

namespace Zorv::Workbook {

namespace {

/// The condition of a visual rule in the extension list, if it has one.
std::optional<DOM::FormulaSyntaxTree::Expr> readVisualCondition(
    std::vector<std::string> const& formulas) {
  return formulas.empty() || formulas[0].empty() ? std::nullopt
                                                 : std::optional(parseRuleFormula(formulas[0]));
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
  Sheet& sheet = _state.document.getSheets()[_sheet];
  DOM::Table::LiveConditionalFormats formats;
  formats.reserve(_entries.size());
  for (Entry& entry : _entries) {
    if (entry.visual) {
      entry.visual->formatsBefore = formats.size();
      sheet.visualFormats.push_back(std::move(entry.visual));
    } else {
      formats.push_back(std::move(entry.format));
    }
  }
  sheet.table->setConditionalFormats(std::move(formats));
  _entries.clear();
}

void ConditionalFormatReader::readRule(pugi::xml_node element, Rule rule) {
  rule.type = element.attribute("type").value();
  rule.operatorText = element.attribute("operator").value();
  rule.priority = readRulePriority(element);
  rule.stopIfTrue = parseBoolean(element.attribute("stopIfTrue").value()).value_or(false);
  rule.formulas = readRuleFormulas(element);
  rule.needleFormula = findNeedleFormula(element, rule.formulas);
  _state.formatUses.note(element.attribute("dxfId").value());
  for (std::string& fault : findFaultyAttributes(element)) {
    addFinding(rule, std::move(fault));
  }
  countFormulas(rule.formulas);
  FirstPart part{_state.document.getRules().size(), std::nullopt};
  try {
    Entry entry = makeEntry(element, rule);
    rule.format = entry.format.get();
    rule.visual = entry.visual.get();
    part.entry = _entries.size();
    _entries.push_back(std::move(entry));
  } catch (UnresolvedRule const& reason) {
    rule.unresolvedReason = reason.what();
  }
  if (isVisual(rule.type)) {
    for (std::string& id : findExtensionIds(element)) {
      _firstParts.emplace(std::move(id), part);
    }
  }
  _state.document.getRules().push_back(std::move(rule));
}

ConditionalFormatReader::Entry ConditionalFormatReader::makeEntry(pugi::xml_node element,
                                                                  Rule const& rule) {
  if (isVisual(rule.type)) {
    return {rule.priority, nullptr, makeVisual(element, rule)};
  }
  return {rule.priority, makeFormat(element, rule), nullptr};
}

/// Each identity is used once: a second element of the same identity is a rule of its own.
bool ConditionalFormatReader::joinsEarlierRule(pugi::xml_node extensionRule) {
  if (!isVisual(extensionRule.attribute("type").value())) {
    return false;
  }
  auto const found = _firstParts.find(std::string_view(extensionRule.attribute("id").value()));
  if (found == _firstParts.end()) {
    return false;
  }
  join(extensionRule, found->second);
  _firstParts.erase(found);
  return true;
}

/// A rule counts if one of its parts can be read.
void ConditionalFormatReader::join(pugi::xml_node extensionRule, FirstPart const& first) {
  Rule& rule = _state.document.getRules()[first.rule];
  Visuals::VisualFormat* const visual = first.entry ? _entries[*first.entry].visual.get() : nullptr;
  try {
    if (rule.type != extensionRule.attribute("type").value()) {
      throw UnresolvedRule("it is of another type");
    }
    auto const formulas = readRuleFormulas(extensionRule);
    countFormulas(formulas);
    auto condition = readVisualCondition(formulas);
    auto kind = readVisual(extensionRule, rule, visual != nullptr ? &visual->kind : nullptr);
    if (condition) {
      rule.formulas = formulas;
    }
    if (visual != nullptr) {
      visual->kind = std::move(kind);
      visual->condition = std::move(condition);
      return;
    }
    auto rescued = std::make_unique<Visuals::VisualFormat>(
        Visuals::VisualFormat{listRanges(rule), std::move(kind), std::move(condition)});
    rule.visual = rescued.get();
    rule.unresolvedReason.clear();
    _entries.push_back({rule.priority, nullptr, std::move(rescued)});
  } catch (UnresolvedRule const& reason) {
    addFinding(rule,
               fmt::format("has a part in the extension list that is left out: {}", reason.what()));
  }
}

std::unique_ptr<Visuals::VisualFormat> ConditionalFormatReader::makeVisual(pugi::xml_node element,
                                                                           Rule const& rule) {
  auto kind = readVisual(element, rule, nullptr);
  std::optional<DOM::FormulaSyntaxTree::Expr> condition;
  if (rule.fromExtensionList) {
    condition = readVisualCondition(rule.formulas);
  }
  return std::make_unique<Visuals::VisualFormat>(
      Visuals::VisualFormat{listRanges(rule), std::move(kind), std::move(condition)});
}

Visuals::VisualKind ConditionalFormatReader::readVisual(pugi::xml_node element, Rule const& rule,
                                                        Visuals::VisualKind const* first) {
  std::vector<std::string> faults;
  auto kind = Workbook::readVisual(element, _styles.getPalette(), first, faults);
  for (std::string& fault : faults) {
    addFinding(rule, std::move(fault));
  }
  _state.memory.take(sizeof(Visuals::VisualFormat) +
                     Visuals::IconSet::mostSteps * sizeof(Visuals::Threshold));
  std::vector<std::string> formulas;
  for (Visuals::Threshold const* threshold : Visuals::listThresholds(kind)) {
    formulas.push_back(threshold->text);
  }
  countFormulas(formulas);
  return kind;
}

void ConditionalFormatReader::countFormulas(std::vector<std::string> const& formulas) {
  Sheet const& sheet = _state.document.getSheets()[_sheet];
  for (std::string const& formula : formulas) {
    _state.countFormula(formula, sheet.part);
  }
}

std::unique_ptr<DOM::ConditionalFormat const> ConditionalFormatReader::makeFormat(
    pugi::xml_node element, Rule const& rule) {
  auto condition = readCondition(element, rule.formulas);
  auto ranges = listRanges(rule);
  if (_state.semantics == Semantics::Widespread) {
    condition = toWidespread(std::move(condition), rule);
  }
  return std::make_unique<DOM::ConditionalFormat const>(std::move(ranges), std::move(condition),
                                                        findStyle(element, rule), rule.stopIfTrue);
}

std::vector<DOM::TableRangeByID> ConditionalFormatReader::listRanges(Rule const& rule) const {
  if (rule.ranges.empty()) {
    throw UnresolvedRule(rule.rangeText.empty()
                             ? "the rule has no range"
                             : fmt::format("\"{}\" is no range of the sheet", rule.rangeText));
  }
  DOM::Table const& table = *_state.document.getSheets()[_sheet].table;
  std::vector<DOM::TableRangeByID> ranges;
  ranges.reserve(rule.ranges.size());
  std::transform(rule.ranges.begin(), rule.ranges.end(), std::back_inserter(ranges),
                 [&table](TableRange const& range) { return table.toRangeByID(range); });
  return ranges;
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
