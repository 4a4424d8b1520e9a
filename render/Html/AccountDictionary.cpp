#include "render/Html/AccountDictionary.h"

#include <array>
#include <charconv>
#include <limits>
#include <optional>

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

void appendIndex(std::string& out, std::size_t index) {
  std::array<char, std::numeric_limits<std::size_t>::digits10 + 1> digits{};
  out.append(digits.data(), std::to_chars(digits.begin(), digits.end(), index).ptr);
}

/// Appends a colour as a text; an empty one for none.
void appendColourText(std::string& out, std::optional<DOM::Colour> const& colour) {
  out += '"';
  if (colour) {
    out += toCss(*colour);
  }
  out += '"';
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

template <class Append>
std::size_t AccountDictionary::List::add(std::string_view key, Append const& append) {
  auto const found = _indices.find(key);
  if (found != _indices.end()) {
    return found->second;
  }
  _json += _json.empty() ? "" : ",\n";
  append(_json);
  return _indices.emplace(key, _indices.size()).first->second;
}

std::size_t AccountDictionary::addText(std::string_view text) {
  constexpr std::size_t widest = 1'000;
  auto const add = [this](std::string_view shown) {
    return _texts.add(shown, [&](std::string& json) { appendJson(json, shown); });
  };
  bool const isShown = text.size() <= widest && Words::isPlain(text);
  return isShown ? add(text) : add(Words::shorten(text, widest));
}

void AccountDictionary::appendText(std::string& out, std::string_view text) {
  appendIndex(out, addText(text));
}

std::size_t AccountDictionary::add(Words::AccountText const& account) {
  std::string out = "[";
  appendText(out, account.value);
  out += ',';
  appendText(out, account.absence);
  out += ',';
  appendList(out, account.rules,
             [&](Words::RuleText const& rule) { appendIndex(out, addRule(rule)); });
  out += ',';
  appendList(out, account.nearest, [&](std::string const& text) { appendText(out, text); });
  for (auto const* const set : {&account.style, &account.visuals}) {
    out += ',';
    appendList(out, *set,
               [&](Words::SetText const& item) { appendPhrase(out, item.phrase, item.rule); });
  }
  out += ',';
  appendList(out, account.own,
             [&](Words::StylePhrase const& phrase) { appendPhrase(out, phrase); });
  out += ']';
  return _accounts.add(out, [&](std::string& json) { json += out; });
}

std::size_t AccountDictionary::addRule(Words::RuleText const& rule) {
  auto const addTexts = [&](std::string& out, std::vector<std::string> const& texts) {
    appendList(out, texts, [&](std::string const& text) { appendText(out, text); });
  };
  std::string out = "[";
  appendIndex(out, rule.number);
  out += ',';
  appendText(out, rule.outcome);
  out += ",\"";
  out += wordOfTone(rule.tone);
  out += "\",";
  appendText(out, rule.condition);
  out += ',';
  addTexts(out, rule.reasons);
  out += ',';
  appendList(out, rule.formulas,
             [&](Words::FormulaText const& formula) { appendFormula(out, formula); });
  out += ',';
  appendText(out, rule.elsewhere);
  out += rule.holds ? ",1," : ",0,";
  appendList(out, rule.sets, [&](Words::StylePhrase const& phrase) { appendPhrase(out, phrase); });
  out += ',';
  appendList(out, rule.taken, [&](Words::TakenText const& taken) {
    appendPhrase(out, taken.phrase, taken.takenBy);
  });
  out += ',';
  addTexts(out, rule.doubts);
  out += ']';
  return _rules.add(out, [&](std::string& json) { json += out; });
}

void AccountDictionary::appendPhrase(std::string& out, Words::StylePhrase const& phrase) {
  out += '[';
  appendText(out, phrase.text);
  out += ',';
  appendColourText(out, phrase.colour);
  out += ']';
}

/// The same with the rule that it is about.
void AccountDictionary::appendPhrase(std::string& out, Words::StylePhrase const& phrase,
                                     std::size_t rule) {
  appendPhrase(out, phrase);
  out.back() = ',';
  appendIndex(out, rule);
  out += ']';
}

void AccountDictionary::appendFormula(std::string& out, Words::FormulaText const& formula) {
  out += '[';
  appendText(out, formula.here);
  out += ',';
  appendList(out, formula.steps, [&](Words::StepText const& step) {
    out += '[';
    appendText(out, step.text);
    out += ',';
    appendText(out, step.value);
    out += ']';
  });
  out += formula.isCut ? ",1]" : ",0]";
}

std::string AccountDictionary::getMembers() const {
  return fmt::format("\"texts\":[{}],\n\"rules\":[{}],\n\"accounts\":[{}]", _texts.getJson(),
                     _rules.getJson(), _accounts.getJson());
}

}  // namespace Zorv::Render
