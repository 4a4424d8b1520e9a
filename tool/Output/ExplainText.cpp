#include <algorithm>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/ExplainOutput.h"
#include "tool/Output/ExplainRuleText.h"
#include "tool/Text/Amounts.h"
#include "tool/Text/CellText.h"
#include "tool/Text/ConditionText.h"
#include "tool/Text/Printable.h"
#include "tool/Text/StyleText.h"
#include "tool/Text/ValueText.h"
#include "tool/Text/VisualText.h"

namespace Zorv::Tool {

namespace {

/// Who sets the phrases of a style: a rule, or null for the cell itself.
Workbook::Rule const* findSetter(Analysis::CellAccount const& account, std::string_view property) {
  auto const found =
      std::ranges::find(account.properties, property, &Analysis::EffectiveProperty::name);
  return found == account.properties.end() ? nullptr : found->setBy;
}

/// Whether the four sides of the border have one setter.
bool hasOneBorder(Analysis::CellAccount const& account) {
  auto const* const left = findSetter(account, "borderLeft");
  return std::ranges::all_of(
      std::initializer_list<std::string_view>{"borderRight", "borderTop", "borderBottom"},
      [&](std::string_view side) { return findSetter(account, side) == left; });
}

class ExplainText final : public ExplainOutput {
public:
  ExplainText(Selection const& selection, OfficeUtils::LocaleContext const& locale,
              Terminal const& terminal, OutputBuffer& out)
      : _document(selection.getDocument()),
        _askedFor(selection.getOptions().rule),
        _locale(locale),
        _formatter(locale),
        _lines(terminal, out),
        _out(out) {}

  void add(Analysis::CellAccount const& account) override {
    if (_hasCell) {
      _lines.addBlank();
    }
    _hasCell = true;
    addHeading(account);
    if (account.rules.empty()) {
      _lines.add(0, account.rulesElsewhere == 0 ? "The sheet has no conditional format."
                                                : "No conditional format is on this cell.");
    }
    for (auto const& rule : account.rules) {
      addRule(rule, account, _document, _locale, _lines);
    }
    addNearest(account);
    if (!_askedFor && !account.rules.empty()) {
      addEffectiveStyle(account);
    }
    _out.endEntry();
  }

  void finish() override {}

private:
  void addHeading(Analysis::CellAccount const& account) {
    auto const address = fmt::format("{}!{}", _document.getSheets()[account.sheet].name,
                                     DOM::A1Notation::toAddress(account.cell));
    if (account.content == nullptr || FormulaModel::isFormulaEmpty(account.content->value)) {
      return _lines.addHeading(address, "empty");
    }
    auto const* const format = account.effectiveStyle.getCellFormat().get();
    std::string const shown(_formatter.toText(*account.content, format));
    auto const value = describeValue(account.content->value, NumberMeaning::Number, _locale);
    bool const isPlain = shown == value || '"' + shown + '"' == value;
    _lines.addHeading(address, isPlain ? value : fmt::format("{}, the value {}", shown, value));
  }

  void addNearest(Analysis::CellAccount const& account) {
    for (auto const& near : account.nearest) {
      auto const range = DOM::A1Notation::toAddress(near.range);
      _lines.add(
          1, _askedFor ? fmt::format("{} is {} away", range, describeDistance(near))
                       : fmt::format("rule {} is {} away, on {}: {}", near.rule->number,
                                     describeDistance(near), range, describeCondition(*near.rule)));
    }
  }

  static std::string describeDistance(Analysis::NearbyRule const& near) {
    auto const rows = countOf(near.rows, "row");
    auto const columns = countOf(near.columns, "column");
    return near.rows == 0      ? columns
           : near.columns == 0 ? rows
                               : fmt::format("{} and {}", rows, columns);
  }

  /// A line for each phrase that a rule sets; what the cell itself sets is one.
  void addEffectiveStyle(Analysis::CellAccount const& account) {
    _lines.addTitle("The cell looks like this", "");
    auto phrases = listPhrases(account.effectiveStyle, hasOneBorder(account));
    std::erase_if(phrases,
                  [](StylePhrase const& phrase) { return phrase.text == "format General"; });
    auto const isOwn = [&](StylePhrase const& phrase) {
      return findSetter(account, phrase.property) == nullptr;
    };
    auto const own = std::ranges::stable_partition(phrases, std::not_fn(isOwn));
    std::span const byRules(phrases.begin(), own.begin());
    constexpr std::size_t narrowestPhrase = 3;
    std::size_t width = narrowestPhrase;
    for (auto const& phrase : byRules) {
      width = std::max(width, displayWidth(toPrintable(phrase.text)));
    }
    width = std::min(width, _lines.getWidth() / 2);
    for (auto const& phrase : byRules) {
      _lines.addPhrase(1, phrase, width,
                       fmt::format("by rule {}", findSetter(account, phrase.property)->number));
    }
    addVisuals(account);
    _lines.addPhrases(1, "of its own: ", own, "");
  }

  void addVisuals(Analysis::CellAccount const& account) {
    auto const& [scale, bar, icon] = account.visualRules;
    for (auto const* rule : {scale, bar, icon}) {
      if (rule != nullptr) {
        _lines.add(1, fmt::format("{}  by rule {}", describeOf(account.visuals, rule->visual->kind),
                                  rule->number));
      }
    }
  }

  Workbook::Document const& _document;
  std::optional<std::size_t> _askedFor;
  OfficeUtils::LocaleContext const& _locale;
  CellFormatter _formatter;
  ExplainLines _lines;
  OutputBuffer& _out;
  bool _hasCell = false;
};

}  // namespace

std::unique_ptr<ExplainOutput> makeExplainText(Selection const& selection,
                                               OfficeUtils::LocaleContext const& locale,
                                               Terminal const& terminal, OutputBuffer& out) {
  return std::make_unique<ExplainText>(selection, locale, terminal, out);
}

}  // namespace Zorv::Tool
