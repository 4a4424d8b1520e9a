#include "Formulas/Functions/NumberFormatClass.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include <fmt/format.h>

#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

/// A section of a format, without its literal texts.
struct Section {
  std::string signs;  ///< in upper case
  bool hasColour = false;
  bool hasCurrency = false;

  [[nodiscard]] bool has(char sign) const { return signs.find(sign) != std::string::npos; }
  [[nodiscard]] bool has(std::string_view part) const {
    return signs.find(part) != std::string::npos;
  }
};

/// Reads a format sign by sign.
class SectionReader {
public:
  explicit SectionReader(std::string_view format) : _rest(format) {}

  std::vector<Section> readAll() {
    while (!_rest.empty()) {
      readSign();
    }
    return std::move(_sections);
  }

private:
  void readSign() {
    Section& section = _sections.back();
    char const sign = toAsciiUpper(_rest.front());
    _rest.remove_prefix(1);
    switch (sign) {
      case ';':
        _sections.emplace_back();
        break;
      case '"':
        takeUntil('"');
        break;
      case '\\':
      case '_':
      case '*':
        _rest.remove_prefix(std::min<std::size_t>(1, _rest.size()));
        break;
      case '[':
        readBracketed(takeUntil(']'));
        break;
      default:
        section.hasCurrency = section.hasCurrency || isCurrencySign(sign);
        section.signs += sign;
    }
  }

  /// A currency, a colour, a condition, or hours, minutes and seconds beyond a day.
  void readBracketed(std::string_view text) {
    Section& section = _sections.back();
    if (text.starts_with('$')) {
      section.hasCurrency = section.hasCurrency || (text.size() > 1 && text[1] != '-');
    } else if (std::ranges::all_of(text, isAsciiLetter)) {
      std::string const letters = toAsciiUpper(text);
      if (letters.find_first_not_of("HMS") == std::string::npos) {
        section.signs += letters;
      } else {
        section.hasColour = true;
      }
    }
  }

  std::string_view takeUntil(char end) {
    std::size_t const length = std::min(_rest.find(end), _rest.size());
    std::string_view const taken = _rest.substr(0, length);
    _rest.remove_prefix(std::min(length + 1, _rest.size()));
    return taken;
  }

  /// The first byte of the signs of euro, pound and yen is enough: no other sign begins so.
  static bool isCurrencySign(char sign) noexcept {
    return sign == '$' || sign == '\xE2' || sign == '\xC2';
  }

  std::string_view _rest;
  std::vector<Section> _sections{1};
};

bool isDate(Section const& section) {
  return section.signs.find_first_of("DMYHS") != std::string::npos && !section.has("GENERAL");
}

std::string classifyTime(Section const& section) {
  bool const hasSeconds = section.has('S');
  if (section.has("AM/PM") || section.has("A/P")) {
    return hasSeconds ? "D6" : "D7";
  }
  return hasSeconds ? "D8" : "D9";
}

std::string classifyDate(Section const& section) {
  bool const hasYear = section.has('Y');
  bool const hasDay = section.has('D');
  if (!hasYear && !hasDay && (section.has('H') || section.has('S'))) {
    return classifyTime(section);
  }
  if (!hasDay) {
    return "D3";
  }
  if (section.has("MMM")) {
    return hasYear ? "D1" : "D2";
  }
  return hasYear ? "D4" : "D5";
}

std::size_t countDecimals(std::string const& signs) {
  std::size_t const point = signs.find('.');
  if (point == std::string::npos) {
    return 0;
  }
  std::size_t const end = signs.find_first_not_of("0#?", point + 1);
  return std::min(end, signs.size()) - point - 1;
}

std::string classifyNumber(Section const& section) {
  bool const isNumber = section.has('0') || section.has('#');
  if (!isNumber || section.has('/') || section.has('@')) {
    return "G";
  }
  char const kind = section.has('E')      ? 'S'
                    : section.has('%')    ? 'P'
                    : section.hasCurrency ? 'C'
                    : section.has(',')    ? ','
                                          : 'F';
  return fmt::format("{}{}", kind, countDecimals(section.signs));
}

}  // namespace

NumberFormatClass classifyNumberFormat(std::string_view format) {
  std::vector<Section> const sections = SectionReader(format).readAll();
  Section const& first = sections.front();
  NumberFormatClass result;
  result.code = isDate(first) ? classifyDate(first) : classifyNumber(first);
  result.hasNegativeColour = sections.size() > 1 && sections[1].hasColour;
  result.hasParentheses = first.has('(');
  result.code += result.hasNegativeColour ? "-" : "";
  result.code += result.hasParentheses ? "()" : "";
  return result;
}

}  // namespace Zorv::Formulas
