#include "words/AccountText.h"

#include <algorithm>
#include <initializer_list>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "words/Amounts.h"
#include "words/ConditionText.h"
#include "words/ValueText.h"
#include "words/VisualText.h"

namespace Zorv::Words {

namespace {

/// Who sets the phrases of a style: a rule, or null for the cell itself.
Workbook::Rule const* findSetter(Analysis::CellAccount const& account, std::string_view property) {
  auto const found =
      std::ranges::find(account.properties, property, &Analysis::EffectiveProperty::name);
  return found == account.properties.end() ? nullptr : found->setBy;
}

/// True if the four sides of the border have one setter.
bool hasOneBorder(Analysis::CellAccount const& account) {
  auto const* const left = findSetter(account, "borderLeft");
  return std::ranges::all_of(
      std::initializer_list<std::string_view>{"borderRight", "borderTop", "borderBottom"},
      [&](std::string_view side) { return findSetter(account, side) == left; });
}

std::string describeDistance(Analysis::NearbyRule const& near) {
  auto const rows = countOf(near.rows, "row");
  auto const columns = countOf(near.columns, "column");
  return near.rows == 0      ? columns
         : near.columns == 0 ? rows
                             : fmt::format("{} and {}", rows, columns);
}

/// Rules are there besides a nearest one only if that one was asked for, and is known.
std::string describeNearest(Analysis::NearbyRule const& near, bool isKnown) {
  auto const range = DOM::A1Notation::toAddress(near.range);
  return isKnown ? fmt::format("{} is {} away", range, describeDistance(near))
                 : fmt::format("rule {} is {} away, on {}: {}", near.rule->number,
                               describeDistance(near), range, describeCondition(*near.rule));
}

/// Adds the style that the cell shows, by rules and of its own.
void addEffectiveStyle(Analysis::CellAccount const& account, AccountText& text) {
  for (auto& phrase : listPhrases(account.effectiveStyle, hasOneBorder(account))) {
    if (auto const* const setter = findSetter(account, phrase.property)) {
      text.style.push_back({.phrase = std::move(phrase), .rule = setter->number});
    } else if (phrase.text != "format General") {
      text.own.push_back(std::move(phrase));
    }
  }
}

void addDrawings(Analysis::CellAccount const& account, AccountText& text) {
  auto const& [scale, bar, icon] = account.visualRules;
  for (auto const* rule : {scale, bar, icon}) {
    if (rule != nullptr) {
      StylePhrase phrase{.property = {},
                         .text = describeOf(account.visuals, rule->visual->kind),
                         .colour = std::nullopt};
      text.visuals.push_back({.phrase = std::move(phrase), .rule = rule->number});
    }
  }
}

}  // namespace

AccountText AccountWriter::describe(Analysis::CellAccount const& account) {
  AccountText text;
  text.cell = fmt::format("{}!{}", _document.getSheets()[account.sheet].name,
                          DOM::A1Notation::toAddress(account.cell));
  text.value = describeContent(account);
  if (account.rules.empty()) {
    text.absence = account.rulesElsewhere == 0 ? "The sheet has no conditional format."
                                               : "No conditional format is on this cell.";
  }
  auto const meaning = findMeaning(account);
  for (auto const& rule : account.rules) {
    text.rules.push_back(
        describeRule(rule, getOrCreateWords(*rule.rule), account, meaning, _locale));
  }
  for (auto const& near : account.nearest) {
    text.nearest.push_back(describeNearest(near, !account.rules.empty()));
  }
  addEffectiveStyle(account, text);
  addDrawings(account, text);
  return text;
}

std::string AccountWriter::describeContent(Analysis::CellAccount const& account) {
  if (account.content == nullptr || FormulaModel::isFormulaEmpty(account.content->value)) {
    return "empty";
  }
  auto const* const format = account.effectiveStyle.getCellFormat().get();
  std::string const shown(_formatter.toText(*account.content, format));
  auto value = describeValue(account.content->value, NumberMeaning::Number, _locale);
  bool const isSame = shown == value || '"' + shown + '"' == value;
  return isSame ? value : fmt::format("{}, the value {}", shown, value);
}

/// Meaning of the cell's number, by its number format.
NumberMeaning AccountWriter::findMeaning(Analysis::CellAccount const& account) {
  auto const& format = account.effectiveStyle.getCellFormat();
  auto const number = account.content != nullptr
                          ? FormulaModel::asFormulaNumberOpt(account.content->value)
                          : boost::optional<FormulaModel::FormulaNumber>();
  return format && number && _formatter.showsDate(number->value.get(), *format)
             ? NumberMeaning::Date
             : NumberMeaning::Number;
}

RuleWords const& AccountWriter::getOrCreateWords(Workbook::Rule const& rule) {
  auto const found = _words.find(&rule);
  return found != _words.end()
             ? found->second
             : _words.emplace(&rule, makeRuleWords(_document, rule)).first->second;
}

}  // namespace Zorv::Words
