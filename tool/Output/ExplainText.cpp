#include <algorithm>
#include <string>

#include <fmt/format.h>

#include "tool/Output/ExplainOutput.h"
#include "tool/Output/ExplainRuleText.h"
#include "words/AccountText.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

class ExplainText final : public ExplainOutput {
public:
  ExplainText(Selection const& selection, OfficeUtils::LocaleContext const& locale,
              Terminal const& terminal, OutputBuffer& out)
      : _isOneRule(selection.getOptions().rule.has_value()),
        _writer(selection.getDocument(), locale),
        _lines(terminal, out),
        _out(out) {}

  void add(Analysis::CellAccount const& account) override {
    if (_hasCell) {
      _lines.addBlank();
    }
    _hasCell = true;
    auto const text = _writer.describe(account);
    _lines.addHeading(text.cell, text.value);
    if (!text.absence.empty()) {
      _lines.add(0, text.absence);
    }
    for (auto const& rule : text.rules) {
      addRule(rule, _lines);
    }
    for (auto const& near : text.nearest) {
      _lines.add(1, near);
    }
    if (!_isOneRule && !text.rules.empty()) {
      addEffectiveStyle(text);
    }
    _out.endEntry();
  }

  void finish() override {}

private:
  /// A line for each phrase that a rule sets; what the cell itself sets is one.
  void addEffectiveStyle(Words::AccountText const& text) {
    _lines.addTitle("The cell looks like this", "");
    constexpr std::size_t narrowestPhrase = 3;
    std::size_t width = narrowestPhrase;
    for (auto const& [phrase, rule] : text.style) {
      width = std::max(width, Words::displayWidth(Words::toPrintable(phrase.text)));
    }
    width = std::min(width, _lines.getWidth() / 2);
    for (auto const& [phrase, rule] : text.style) {
      _lines.addPhrase(1, phrase, width, fmt::format("by rule {}", rule));
    }
    for (auto const& [phrase, rule] : text.visuals) {
      _lines.add(1, fmt::format("{}  by rule {}", phrase.text, rule));
    }
    _lines.addPhrases(1, "of its own: ", text.own, "");
  }

  bool _isOneRule;  ///< one rule is asked for, and nothing else
  Words::AccountWriter _writer;
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
