// Texts put together of others, and single characters.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/utf16.h>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/CharacterCounts.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/TextBuilder.h"
#include "Formulas/Text/Texts.h"
#include "Formulas/Values/Arrays.h"
#include "Formulas/Values/Coercion.h"
#include "Formulas/Values/Elements.h"

namespace Zorv::Formulas {

namespace {

/// REPT(text, count)
Value repeat(Call& call) {
  auto const count = toCharacterCount(std::trunc(call.number(1)), 0.0);
  if (!count) {
    return wrongValue();
  }
  std::string_view const text = call.text(0);
  call.steps().spend(text.empty() ? 0 : std::min(*count, TextBuilder::mostBytes));
  TextBuilder result;
  for (std::size_t i = 0; i < *count && !text.empty() && result.append(text); ++i) {
  }
  return result.toValue(call);
}

/// REPLACE(text, position, count, new): positions count from 1.
Value replace(Call& call) {
  auto const position = toCharacterCount(std::trunc(call.number(1)), 1.0);
  auto const count = toCharacterCount(std::trunc(call.number(2)), 0.0);
  if (!position || !count) {
    return wrongValue();
  }
  std::string_view const text = call.text(0);
  std::size_t const before = bytesOfCharacters(text, *position - 1);
  std::string_view const rest = text.substr(before);
  TextBuilder result;
  result.append(text.substr(0, before));
  result.append(call.text(3));
  result.append(rest.substr(bytesOfCharacters(rest, *count)));
  return result.toValue(call);
}

icu::UnicodeString toUnicode(std::string_view text) {
  return icu::UnicodeString::fromUTF8({text.data(), static_cast<std::int32_t>(text.size())});
}

Value fromUnicode(Call const& call, icu::UnicodeString const& unicode) {
  std::string text;
  return call.makeText(unicode.toUTF8String(text));
}

/// PROPER: a capital at the beginning of each run of letters.
Value capitalize(Call& call) {
  call.steps().spend(call.text(0).size());
  icu::UnicodeString const text = toUnicode(call.text(0));
  icu::UnicodeString result;
  bool isInWord = false;
  for (std::int32_t at = 0; at < text.length(); at = text.moveIndex32(at, 1)) {
    UChar32 const code = text.char32At(at);
    result.append(isInWord ? u_tolower(code) : u_totitle(code));
    isInWord = u_isalpha(code) != 0;
  }
  return fromUnicode(call, result);
}

/// CLEAN: without control characters.
Value clean(Call& call) {
  std::string result;
  for (char const c : call.text(0)) {
    bool const isControl = static_cast<unsigned char>(c) < static_cast<unsigned char>(' ');
    result += isControl ? std::string() : std::string(1, c);
  }
  return call.makeText(result);
}

/// Hands the texts of a value's positions to `visit(text)`, row by row, until it returns false;
/// empty ones only where they matter. Returns the error that it meets.
template <class Visit>
std::optional<Value> visitTexts(Call const& call, Value const& value, bool withEmpty,
                                Visit&& visit) {
  std::optional<Value> error;
  if (value.isReferences()) {
    for (Area const& area : value.asAreas()) {
      error = error ? error : visitTexts(call, Value::reference(area), withEmpty, visit);
    }
    return error;
  }
  bool isRowEmpty = true;
  auto const visitElement = [&](Value const& element) {
    call.steps().spend(stepsOf(element));
    auto const text = call.evaluator().toText(element);
    if (text.isError()) {
      error = text.error();
      return false;
    }
    bool const isVisited = withEmpty || !(*text).empty();
    isRowEmpty = isRowEmpty && !isVisited;
    return !isVisited || visit(*text);
  };
  bool const isRange = value.isReference() && withEmpty;
  if (!isRange && !value.isArray()) {
    forEachElement(call.steps(), value, visitElement);
    return error;
  }
  Array const& array = call.evaluator().toArray(value);
  for (std::uint32_t row = 0; row < array.rows; ++row) {
    isRowEmpty = true;
    for (std::uint32_t column = 0; column < array.columns; ++column) {
      if (!visitElement(array.at(row, column))) {
        return error;
      }
    }
    // All rows below are like this one.
    if (isRowEmpty && row + 1 >= array.storedRows) {
      break;
    }
  }
  return error;
}

/// CONCAT: the texts of all cells and elements.
Value concatenateAll(Call& call) {
  TextBuilder result;
  std::optional<Value> error;
  for (Value const& argument : call.arguments()) {
    if (!error) {
      error = visitTexts(call, argument, false,
                         [&](std::string_view text) { return result.append(text); });
    }
  }
  return error ? *error : result.toValue(call);
}

/// Joins texts with delimiters between them, each in its turn. Borrows the delimiters, of which
/// there is at least one.
class Joiner {
public:
  explicit Joiner(std::vector<std::string_view> const& delimiters) noexcept
      : _delimiters(&delimiters) {}

  /// False once the result is too long.
  bool add(std::string_view text) {
    if (_count != 0) {
      _result.append((*_delimiters)[(_count - 1) % _delimiters->size()]);
    }
    ++_count;
    return _result.append(text);
  }

  [[nodiscard]] TextBuilder const& result() const noexcept { return _result; }

private:
  std::vector<std::string_view> const* _delimiters;
  std::size_t _count = 0;
  TextBuilder _result;
};

/// TEXTJOIN(delimiters, skips empty texts, texts)
Value join(Call& call) {
  // A longer text than fits into a cell has no more pieces.
  constexpr std::size_t mostDelimiters = 32767;
  std::vector<std::string_view> delimiters;
  auto error = visitTexts(call, call[0], true, [&](std::string_view text) {
    delimiters.push_back(text);
    return delimiters.size() < mostDelimiters;
  });
  if (error) {
    return *error;
  }
  if (delimiters.empty()) {
    delimiters.emplace_back();
  }
  bool const haveText =
      std::ranges::any_of(delimiters, [](std::string_view text) { return !text.empty(); });
  bool const withEmpty = haveText && !call.truth(1);
  Joiner joiner(delimiters);
  for (Value const& argument : call.arguments().subspan(2)) {
    if (!error) {
      error = visitTexts(call, argument, withEmpty,
                         [&](std::string_view text) { return joiner.add(text); });
    }
  }
  return error ? *error : joiner.result().toValue(call);
}

/// The characters of the codes from 128 to 159 in Western European texts; codes without one are
/// control characters.
constexpr std::array<UChar32, 32> upperCharacters = {
    0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178,
};
constexpr UChar32 firstUpperCode = 128;
constexpr UChar32 endOfCodes = 256;

/// CHAR(code)
Value characterOfCode(Call& call) {
  double const number = std::trunc(call.number(0));
  if (!(1.0 <= number && number < endOfCodes)) {
    return wrongValue();
  }
  auto const code = static_cast<UChar32>(number);
  auto const index = static_cast<std::size_t>(code - firstUpperCode);
  bool const isUpper = code >= firstUpperCode && index < upperCharacters.size();
  return fromUnicode(call, icu::UnicodeString(isUpper ? upperCharacters[index] : code));
}

/// The first character of a text; nothing where there is none.
std::optional<UChar32> readFirst(std::string_view text) {
  icu::UnicodeString const first = toUnicode(text.substr(0, bytesOfCharacters(text, 1)));
  return first.isEmpty() != 0 ? std::nullopt : std::optional(first.char32At(0));
}

/// CODE(text): of the first character; that of a question mark where it has none.
Value codeOfCharacter(Call& call) {
  auto const first = readFirst(call.text(0));
  if (!first) {
    return wrongValue();
  }
  auto const* const upper = std::ranges::find(upperCharacters, *first);
  if (upper != upperCharacters.end()) {
    return Value::number(firstUpperCode + static_cast<double>(upper - upperCharacters.begin()));
  }
  return Value::number(*first < endOfCodes ? *first : '?');
}

/// UNICHAR(code)
Value characterOfCodePoint(Call& call) {
  double const number = std::trunc(call.number(0));
  if (!(1.0 <= number && number <= UCHAR_MAX_VALUE)) {
    return wrongValue();
  }
  auto const code = static_cast<UChar32>(number);
  return U_IS_SURROGATE(code) ? Value::error(FormulaErrorCode::NotAvailable)
                              : fromUnicode(call, icu::UnicodeString(code));
}

/// UNICODE(text)
Value codePointOfCharacter(Call& call) {
  auto const first = readFirst(call.text(0));
  return first ? Value::number(*first) : wrongValue();
}

}  // namespace

std::span<FunctionEntry const> textEditingFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"CHAR", "code:n", characterOfCode, "Character of a code from 1 to 255."},
      FunctionEntry{"CLEAN", "text:t", clean, "Text without control characters."},
      FunctionEntry{"CODE", "text:t", codeOfCharacter, "Code of a text's first character."},
      FunctionEntry{"CONCAT", "value:a, (value:a)", concatenateAll,
                    "All values of ranges and arrays as one text."},
      FunctionEntry{"PROPER", "text:t", capitalize,
                    "Text whose words begin with a capital letter."},
      FunctionEntry{"REPLACE", "text:t, start:n, count:n, new:t", replace,
                    "Text with some characters replaced."},
      FunctionEntry{"REPT", "text:t, count:n", repeat, "Text repeated."},
      FunctionEntry{"TEXTJOIN", "separator:a, skipsEmpty:b, value:a, (value:a)", join,
                    "All values as one text, with separators between them."},
      FunctionEntry{"UNICHAR", "code:n", characterOfCodePoint,
                    "Character of a Unicode code point."},
      FunctionEntry{"UNICODE", "text:t", codePointOfCharacter,
                    "Unicode code point of a text's first character."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
