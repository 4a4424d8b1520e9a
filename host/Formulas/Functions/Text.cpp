// Texts. Lengths and positions count characters.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include <unicode/unistr.h>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/CharacterCounts.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/TextBuilder.h"
#include "Formulas/Text/Texts.h"
#include "Formulas/Text/Wildcards.h"

namespace Zorv::Formulas {

namespace {

Value length(Call& call) {
  return Value::number(static_cast<double>(countCharacters(call.text(0))));
}

/// LEFT(text, count); without a count one character.
Value left(Call& call) {
  auto const count = toCharacterCount(std::floor(call.number(1, 1.0)), 0.0);
  if (!count) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::string_view const text = call.text(0);
  return Value::text(text.substr(0, bytesOfCharacters(text, *count)));
}

Value right(Call& call) {
  auto const count = toCharacterCount(std::floor(call.number(1, 1.0)), 0.0);
  if (!count) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::string_view const text = call.text(0);
  std::size_t const length = countCharacters(text);
  std::size_t const skipped = length - std::min(length, *count);
  return Value::text(text.substr(bytesOfCharacters(text, skipped)));
}

/// MID(text, position, count); positions count from 1.
Value middle(Call& call) {
  auto const position = toCharacterCount(std::floor(call.number(1)), 1.0);
  auto const count = toCharacterCount(std::floor(call.number(2)), 0.0);
  if (!position || !count) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::string_view const text = call.text(0);
  std::string_view const rest = text.substr(bytesOfCharacters(text, *position - 1));
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
  call.steps().spend(text.size());
  icu::UnicodeString unicode =
      icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
  std::string result;
  (unicode.*change)().toUTF8String(result);
  return call.makeText(result);
}

Value upper(Call& call) { return changeCase(call, &icu::UnicodeString::toUpper); }
Value lower(Call& call) { return changeCase(call, &icu::UnicodeString::toLower); }

Value exact(Call& call) { return Value::boolean(call.text(0) == call.text(1)); }

/// A search from a position on; the position of what is found, from 1, otherwise `#VALUE!`.
template <class FindBytes>
Value findFrom(Call const& call, FindBytes const& findBytes) {
  std::string_view const text = call.text(1);
  auto const position = toCharacterCount(std::floor(call.number(2, 1.0)), 1.0);
  if (!position || *position - 1 > countCharacters(text)) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::size_t const skipped = bytesOfCharacters(text, *position - 1);
  std::optional<std::size_t> const found = findBytes(text.substr(skipped), call.text(0));
  if (!found) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::size_t const before = countCharacters(text.substr(0, skipped + *found));
  return Value::number(static_cast<double>(before + 1));
}

/// The most steps that finding a text in another may take: at each place a part of it may match.
std::uint64_t stepsOfFinding(std::string_view text, std::string_view what) noexcept {
  return text.size() * (1 + stepsOfBytes(what.size())) / 8;
}

/// FIND(what, text, from): letter case matters, and there are no wildcards.
Value find(Call& call) {
  return findFrom(call, [&](std::string_view text, std::string_view what) {
    call.steps().spend(stepsOfFinding(text, what));
    std::size_t const found = text.find(what);
    return found == std::string_view::npos ? std::nullopt : std::optional(found);
  });
}

/// SEARCH(pattern, text, from)
Value search(Call& call) {
  return findFrom(call, [&](std::string_view text, std::string_view pattern) {
    return findWildcards(text, pattern, call.steps());
  });
}

/// SUBSTITUTE(text, old, new, which): all occurrences, or the one of a number.
Value substitute(Call& call) {
  std::string_view rest = call.text(0);
  std::string_view const old = call.text(1);
  auto const which = toCharacterCount(std::floor(call.number(3, 1.0)), 1.0);
  if (!which) {
    return Value::error(FormulaErrorCode::Value);
  }
  call.steps().spend(stepsOfFinding(rest, old));
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

}  // namespace

std::span<FunctionEntry const> textFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"CONCATENATE", "text:t, (text:t)", concatenate, "Texts one behind the other."},
      FunctionEntry{"EXACT", "a:t, b:t", exact,
                    "TRUE for texts that are equal, letter case included."},
      FunctionEntry{"FIND", "searched:t, text:t, [start:n]", find,
                    "Position of a text in another, from 1; letter case matters."},
      FunctionEntry{"LEFT", "text:t, [count:n]", left, "First characters of a text."},
      FunctionEntry{"LEN", "text:t", length, "Number of characters."},
      FunctionEntry{"LOWER", "text:t", lower, "Text in small letters."},
      FunctionEntry{"MID", "text:t, start:n, count:n", middle,
                    "Characters of a text from a position on."},
      FunctionEntry{"RIGHT", "text:t, [count:n]", right, "Last characters of a text."},
      FunctionEntry{
          "SEARCH", "pattern:t, text:t, [start:n]", search,
          "Position of a pattern in a text, from 1; * and ? are wildcards, and letter case "
          "does not matter."},
      FunctionEntry{"SUBSTITUTE", "text:t, old:t, new:t, [occurrence:n]", substitute,
                    "Text with a part replaced, everywhere or at one occurrence."},
      FunctionEntry{"TRIM", "text:t", trim,
                    "Text with single spaces between its words and none around them."},
      FunctionEntry{"UPPER", "text:t", upper, "Text in capital letters."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
