// Texts. Lengths and places count characters.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include <unicode/unistr.h>

#include "Formulas/Evaluation/Texts.h"
#include "Formulas/Evaluation/Wildcards.h"
#include "Formulas/Functions/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/TextBuilder.h"

namespace Zorv::Formulas {

namespace {

/// More characters than any text has.
constexpr double manyCharacters = 1e9;

/// A number of characters, or of a place; nothing for one below the least.
std::optional<std::size_t> toCount(double number, double least) noexcept {
  double const whole = std::floor(number);
  if (whole < least) {
    return std::nullopt;
  }
  return static_cast<std::size_t>(std::min(whole, manyCharacters));
}

Value length(Call& call) {
  return Value::number(static_cast<double>(countCharacters(call.text(0))));
}

/// LEFT(text, count); without a count one character.
Value left(Call& call) {
  auto const count = toCount(call.number(1, 1.0), 0.0);
  if (!count) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::string_view const text = call.text(0);
  return Value::text(text.substr(0, bytesOfCharacters(text, *count)));
}

Value right(Call& call) {
  auto const count = toCount(call.number(1, 1.0), 0.0);
  if (!count) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::string_view const text = call.text(0);
  std::size_t const length = countCharacters(text);
  std::size_t const skipped = length - std::min(length, *count);
  return Value::text(text.substr(bytesOfCharacters(text, skipped)));
}

/// MID(text, place, count); places count from 1.
Value middle(Call& call) {
  auto const place = toCount(call.number(1), 1.0);
  auto const count = toCount(call.number(2), 0.0);
  if (!place || !count) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::string_view const text = call.text(0);
  std::string_view const rest = text.substr(bytesOfCharacters(text, *place - 1));
  return Value::text(rest.substr(0, bytesOfCharacters(rest, *count)));
}

/// TRIM: no spaces at the ends, and one between words.
Value trim(Call& call) {
  std::string result;
  for (char const c : call.text(0)) {
    bool const isSuperfluous = c == ' ' && (result.empty() || result.back() == ' ');
    if (!isSuperfluous) {
      result += c;
    }
  }
  if (!result.empty() && result.back() == ' ') {
    result.pop_back();
  }
  return call.makeText(result);
}

Value changeCase(Call const& call, icu::UnicodeString& (icu::UnicodeString::*change)()) {
  std::string_view const text = call.text(0);
  icu::UnicodeString unicode =
      icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
  std::string result;
  (unicode.*change)().toUTF8String(result);
  return call.makeText(result);
}

Value upper(Call& call) { return changeCase(call, &icu::UnicodeString::toUpper); }
Value lower(Call& call) { return changeCase(call, &icu::UnicodeString::toLower); }

Value exact(Call& call) { return Value::boolean(call.text(0) == call.text(1)); }

/// A search from a place on; the place of what is found, from 1, otherwise `#VALUE!`.
template <class FindBytes>
Value findFrom(Call const& call, FindBytes const& findBytes) {
  std::string_view const text = call.text(1);
  auto const place = toCount(call.number(2, 1.0), 1.0);
  if (!place || *place - 1 > countCharacters(text)) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::size_t const skipped = bytesOfCharacters(text, *place - 1);
  std::optional<std::size_t> const found = findBytes(text.substr(skipped), call.text(0));
  if (!found) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::size_t const before = countCharacters(text.substr(0, skipped + *found));
  return Value::number(static_cast<double>(before + 1));
}

/// FIND(what, text, from): letter case matters, and there are no wildcards.
Value find(Call& call) {
  return findFrom(call, [](std::string_view text, std::string_view what) {
    std::size_t const found = text.find(what);
    return found == std::string_view::npos ? std::nullopt : std::optional(found);
  });
}

/// SEARCH(pattern, text, from)
Value search(Call& call) { return findFrom(call, findWildcards); }

/// SUBSTITUTE(text, old, new, which): all occurrences, or the one of a number.
Value substitute(Call& call) {
  std::string_view rest = call.text(0);
  std::string_view const old = call.text(1);
  auto const which = toCount(call.number(3, 1.0), 1.0);
  if (!which) {
    return Value::error(FormulaErrorCode::Value);
  }
  TextBuilder result;
  std::size_t count = 0;
  std::size_t found = old.empty() ? std::string_view::npos : rest.find(old);
  for (; found != std::string_view::npos && !result.isTooLong(); found = rest.find(old)) {
    bool const isReplaced = !call.has(3) || ++count == *which;
    result.append(rest.substr(0, found));
    result.append(isReplaced ? call.text(2) : old);
    rest.remove_prefix(found + old.size());
  }
  result.append(rest);
  return result.toValue(call);
}

Value concatenate(Call& call) {
  TextBuilder result;
  for (std::size_t i = 0; i < call.count(); ++i) {
    result.append(call.text(i));
  }
  return result.toValue(call);
}

constexpr std::array entries = {
    FunctionEntry{"CONCATENATE", "t(t)", concatenate},
    FunctionEntry{"EXACT", "tt", exact},
    FunctionEntry{"FIND", "tt[n]", find},
    FunctionEntry{"LEFT", "t[n]", left},
    FunctionEntry{"LEN", "t", length},
    FunctionEntry{"LOWER", "t", lower},
    FunctionEntry{"MID", "tnn", middle},
    FunctionEntry{"RIGHT", "t[n]", right},
    FunctionEntry{"SEARCH", "tt[n]", search},
    FunctionEntry{"SUBSTITUTE", "ttt[n]", substitute},
    FunctionEntry{"TRIM", "t", trim},
    FunctionEntry{"UPPER", "t", upper},
};

}  // namespace

std::span<FunctionEntry const> textFunctions() noexcept { return entries; }

}  // namespace Zorv::Formulas
