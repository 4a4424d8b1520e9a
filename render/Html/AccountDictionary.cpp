#include "render/Html/AccountDictionary.h"

#include <utility>

#include <fmt/format.h>

#include "render/Html/Markup.h"
#include "words/Printable.h"

namespace Zorv::Render {

namespace {

/// Appends a list of JSON: `append(item)` for each item.
template <class Items, class Append>
void appendList(std::string& out, Items const& items, Append const& append) {
  out += '[';
  bool isFirst = true;
  for (auto const& item : items) {
    out += isFirst ? "" : ",";
    isFirst = false;
    append(item);
  }
  out += ']';
}

std::string_view wordOfTone(Words::Tone tone) noexcept {
  switch (tone) {
    case Words::Tone::Good:
      return "good";
    case Words::Tone::Bad:
      return "bad";
    case Words::Tone::Faint:
      return "faint";
    case Words::Tone::Plain:
      break;
  }
  return "plain";
}

}  // namespace

std::size_t AccountDictionary::List::add(std::string entry) {
  auto const next = indices.size();
  auto const [found, isNew] = indices.try_emplace(std::move(entry), next);
  if (isNew) {
    json += json.empty() ? "" : ",\n";
    json += found->first;
  }
  return found->second;
}

std::size_t AccountDictionary::addText(std::string_view text) {
  constexpr std::size_t widest = 1'000;
  std::string entry;
  appendJson(entry, Words::shorten(text, widest));
  return _texts.add(std::move(entry));
}

std::size_t AccountDictionary::add(Words::AccountText const& account) {
  auto const appendText = [&](std::string& out, std::string_view text) {
    out += std::to_string(addText(text));
  };
  // Texts are numbered in this order, which that of a call's arguments would leave open.
  auto const value = addText(account.value);
  auto const absence = addText(account.absence);
  std::string out = fmt::format("[{},{},", value, absence);
  appendList(out, account.rules,
             [&](Words::RuleText const& rule) { out += std::to_string(addRule(rule)); });
  out += ',';
  appendList(out, account.nearest, [&](std::string const& text) { appendText(out, text); });
  for (auto const* const set : {&account.style, &account.visuals}) {
    out += ',';
    appendList(out, *set, [&](Words::SetText const& item) {
      appendPhrase(out, item.phrase);
      out.pop_back();
      out += fmt::format(",{}]", item.rule);
    });
  }
  out += ',';
  appendList(out, account.own,
             [&](Words::StylePhrase const& phrase) { appendPhrase(out, phrase); });
  return _accounts.add(out + "]");
}

std::size_t AccountDictionary::addRule(Words::RuleText const& rule) {
  auto const addTexts = [&](std::string& out, std::vector<std::string> const& texts) {
    appendList(out, texts, [&](std::string const& text) { out += std::to_string(addText(text)); });
    out += ',';
  };
  auto const outcome = addText(rule.outcome);
  auto const condition = addText(rule.condition);
  std::string out =
      fmt::format("[{},{},\"{}\",{},", rule.number, outcome, wordOfTone(rule.tone), condition);
  addTexts(out, rule.reasons);
  appendList(out, rule.formulas,
             [&](Words::FormulaText const& formula) { appendFormula(out, formula); });
  out += fmt::format(",{},{},", addText(rule.elsewhere), rule.holds ? 1 : 0);
  appendList(out, rule.sets, [&](Words::StylePhrase const& phrase) { appendPhrase(out, phrase); });
  out += ',';
  appendList(out, rule.taken, [&](Words::TakenText const& taken) {
    appendPhrase(out, taken.phrase);
    out.pop_back();
    out += fmt::format(",{}]", taken.takenBy);
  });
  out += ',';
  addTexts(out, rule.doubts);
  out.back() = ']';
  return _rules.add(std::move(out));
}

void AccountDictionary::appendPhrase(std::string& out, Words::StylePhrase const& phrase) {
  out += fmt::format("[{},", addText(phrase.text));
  appendJson(out, phrase.colour ? toCss(*phrase.colour) : std::string());
  out += ']';
}

void AccountDictionary::appendFormula(std::string& out, Words::FormulaText const& formula) {
  out += fmt::format("[{},", addText(formula.here));
  appendList(out, formula.steps, [&](Words::StepText const& step) {
    auto const text = addText(step.text);
    out += fmt::format("[{},{}]", text, addText(step.value));
  });
  out += formula.isCut ? ",1]" : ",0]";
}

std::string AccountDictionary::getMembers() const {
  return fmt::format("\"texts\":[{}],\n\"rules\":[{}],\n\"accounts\":[{}]", _texts.json,
                     _rules.json, _accounts.json);
}

}  // namespace Zorv::Render
