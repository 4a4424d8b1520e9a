// Roman numerals.

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Text/Characters.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

/// A group of letters, and the forms of numerals from which on it is used: each form is more
/// concise than the one before.
struct NumeralPart {
  int value;
  std::string_view letters;
  int firstForm;
};

constexpr int mostConciseForm = 4;

// From the largest value down (ISO/IEC 29500-1, 18.17.7, ROMAN).
constexpr std::array numeralParts = {
    NumeralPart{1000, "M", 0}, NumeralPart{999, "IM", 4}, NumeralPart{995, "VM", 3},
    NumeralPart{990, "XM", 2}, NumeralPart{950, "LM", 1}, NumeralPart{900, "CM", 0},
    NumeralPart{500, "D", 0},  NumeralPart{499, "ID", 4}, NumeralPart{495, "VD", 3},
    NumeralPart{490, "XD", 2}, NumeralPart{450, "LD", 1}, NumeralPart{400, "CD", 0},
    NumeralPart{100, "C", 0},  NumeralPart{99, "IC", 2},  NumeralPart{95, "VC", 1},
    NumeralPart{90, "XC", 0},  NumeralPart{50, "L", 0},   NumeralPart{49, "IL", 2},
    NumeralPart{45, "VL", 1},  NumeralPart{40, "XL", 0},  NumeralPart{10, "X", 0},
    NumeralPart{9, "IX", 0},   NumeralPart{5, "V", 0},    NumeralPart{4, "IV", 0},
    NumeralPart{1, "I", 0},
};

/// The form that ROMAN's second argument asks for: TRUE is the classic one, FALSE the most concise.
std::optional<int> readForm(Call const& call) {
  if (!call.isGiven(1)) {
    return 0;
  }
  if (call[1].isBoolean()) {
    return call[1].asBoolean() ? 0 : mostConciseForm;
  }
  auto const number = toNumber(call[1], call.locale());
  double const form = number.isError() ? -1.0 : std::trunc(*number);
  return 0.0 <= form && form <= mostConciseForm ? std::optional(static_cast<int>(form))
                                                : std::nullopt;
}

/// ROMAN(number, form)
Value writeRoman(Call& call) {
  constexpr double largest = 3999.0;
  double const number = std::trunc(call.number(0));
  auto const form = readForm(call);
  if (!(0.0 <= number && number <= largest) || !form) {
    return Value::error(FormulaErrorCode::Value);
  }
  std::string text;
  int rest = static_cast<int>(number);
  for (NumeralPart const& part : numeralParts) {
    while (part.firstForm <= *form && rest >= part.value) {
      text += part.letters;
      rest -= part.value;
    }
  }
  return call.makeText(text);
}

/// The value of one letter, or 0.
int valueOfLetter(char letter) noexcept {
  auto const* const found = std::ranges::find_if(numeralParts, [&](NumeralPart const& part) {
    return part.letters.size() == 1 && part.letters.front() == toAsciiUpper(letter);
  });
  return found == numeralParts.end() ? 0 : found->value;
}

/// A letter before one of a larger value is subtracted.
std::optional<int> readRomanLetters(std::string_view text) noexcept {
  int total = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    int const value = valueOfLetter(text[i]);
    if (value == 0) {
      return std::nullopt;
    }
    bool const isSubtracted = i + 1 < text.size() && value < valueOfLetter(text[i + 1]);
    total += isSubtracted ? -value : value;
  }
  return total;
}

/// ARABIC(text)
Value readRoman(Call& call) {
  constexpr std::size_t longest = 255;
  std::string_view text = call.text(0);
  while (!text.empty() && isSpace(text.front())) {
    text.remove_prefix(1);
  }
  while (!text.empty() && isSpace(text.back())) {
    text.remove_suffix(1);
  }
  bool const isNegative = text.starts_with('-');
  text.remove_prefix(isNegative ? 1 : 0);
  auto const number = text.size() > longest ? std::nullopt : readRomanLetters(text);
  if (!number || (isNegative && text.empty())) {
    return Value::error(FormulaErrorCode::Value);
  }
  return Value::number(isNegative ? -*number : *number);
}

}  // namespace

std::span<FunctionEntry const> romanNumeralFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"ARABIC", "text:t", readRoman, "Number that a Roman numeral stands for."},
      FunctionEntry{"ROMAN", "number:n, [form:v]", writeRoman,
                    "Roman numeral, from form 0, the classic one, to form 4, the shortest."},
  };
  return entries;
}

}  // namespace Zorv::Formulas
