#include "workbook/Read/TextNeedle.h"

#include <algorithm>
#include <array>

#include "Utils/CaseFolding.h"
#include "workbook/Xml/XmlText.h"

namespace Zorv::Workbook {

namespace {

/// Removes a function's name and opening parenthesis from the front of a formula; false if they are
/// not there.
bool takeCall(std::string_view& formula, std::string_view name) noexcept {
  formula = trimXmlSpaces(formula);
  bool const matches =
      formula.size() > name.size() && formula[name.size()] == '(' &&
      std::equal(name.begin(), name.end(), formula.begin(),
                 [](char expected, char actual) { return expected == toAsciiUpper(actual); });
  formula.remove_prefix(matches ? name.size() + 1 : 0);
  return matches;
}

/// Position of a character outside strings, quoted names and brackets of any kind; the size of the
/// text if there is none.
std::size_t findOutside(std::string_view formula, char wanted) noexcept {
  char quote = '\0';
  int depth = 0;
  for (std::size_t at = 0; at < formula.size(); ++at) {
    char const character = formula[at];
    if (quote != '\0') {
      quote = character == quote ? '\0' : quote;
    } else if (depth == 0 && character == wanted) {
      return at;
    } else if (character == '"' || character == '\'') {
      quote = character;
    } else if (character == '(' || character == '{' || character == '[') {
      ++depth;
    } else if (character == ')' || character == '}' || character == ']') {
      --depth;
    }
  }
  return formula.size();
}

std::optional<std::string> nonEmpty(std::string_view text) {
  text = trimXmlSpaces(text);
  return text.empty() ? std::nullopt : std::optional<std::string>(text);
}

/// The first argument of SEARCH or FIND.
std::optional<std::string> findSearched(std::string_view formula) {
  takeCall(formula, "NOT");
  if (!takeCall(formula, "ISERROR") ||
      !(takeCall(formula, "SEARCH") || takeCall(formula, "FIND"))) {
    return std::nullopt;
  }
  std::size_t const comma = findOutside(formula, ',');
  return comma == formula.size() ? std::nullopt : nonEmpty(formula.substr(0, comma));
}

/// The text that the beginning or the end of the cell's text is compared with.
std::optional<std::string> findCompared(std::string_view formula) {
  if (!takeCall(formula, "LEFT") && !takeCall(formula, "RIGHT")) {
    return std::nullopt;
  }
  formula.remove_prefix(std::min(formula.size(), findOutside(formula, ')') + 1));
  formula = trimXmlSpaces(formula);
  if (!formula.starts_with('=')) {
    return std::nullopt;
  }
  std::string_view const right = formula.substr(1);
  constexpr std::array furtherOperators{'=', '<', '>'};
  bool const isSimple =
      std::all_of(furtherOperators.begin(), furtherOperators.end(),
                  [right](char sign) { return findOutside(right, sign) == right.size(); });
  return isSimple ? nonEmpty(right) : std::nullopt;
}

}  // namespace

std::optional<std::string> findNeedle(std::string_view formula) {
  formula = trimXmlSpaces(formula);
  formula.remove_prefix(formula.starts_with('=') ? 1 : 0);
  auto const searched = findSearched(formula);
  return searched ? searched : findCompared(formula);
}

std::optional<std::string> parseStringConstant(std::string_view formula) {
  formula = trimXmlSpaces(formula);
  if (formula.size() < 2 || !formula.starts_with('"') || !formula.ends_with('"')) {
    return std::nullopt;
  }
  formula = formula.substr(1, formula.size() - 2);
  std::string text;
  for (std::size_t at = 0; at < formula.size(); ++at) {
    if (formula[at] == '"') {
      ++at;
      if (at == formula.size() || formula[at] != '"') {
        return std::nullopt;
      }
    }
    text += formula[at];
  }
  return text;
}

}  // namespace Zorv::Workbook
