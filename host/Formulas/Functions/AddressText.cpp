#include "Formulas/Functions/AddressText.h"

#include <algorithm>

#include <fmt/format.h>

#include "Formulas/Parsing/A1Text.h"
#include "Formulas/Parsing/Characters.h"

namespace Zorv::Formulas::AddressText {

namespace {

bool isPlainSheetName(std::string_view name) {
  auto const isPlain = [](char c) {
    return isIdentifierPart(c) && c != '$' && c != '?' && c != '\\';
  };
  bool const isIdentifier =
      name.empty() || (isIdentifierStart(name.front()) && std::ranges::all_of(name, isPlain));
  return isIdentifier && A1Text::readCell(name).shape == A1Text::Shape::Other;
}

std::string writeR1C1Axis(char letter, std::uint32_t position, bool isAbsolute) {
  return isAbsolute ? fmt::format("{}{}", letter, position + 1)
                    : fmt::format("{}[{}]", letter, position + 1);
}

}  // namespace

std::string writeColumn(std::uint32_t column) {
  constexpr std::uint32_t letterCount = 26;
  std::string letters;
  for (std::uint32_t rest = column + 1; rest != 0; rest = (rest - 1) / letterCount) {
    letters.insert(letters.begin(), static_cast<char>('A' + (rest - 1) % letterCount));
  }
  return letters;
}

std::string writeA1(std::uint32_t row, std::uint32_t column, bool isRowAbsolute,
                    bool isColumnAbsolute) {
  return fmt::format("{}{}{}{}", isColumnAbsolute ? "$" : "", writeColumn(column),
                     isRowAbsolute ? "$" : "", row + 1);
}

std::string writeR1C1(std::uint32_t row, std::uint32_t column, bool isRowAbsolute,
                      bool isColumnAbsolute) {
  return writeR1C1Axis('R', row, isRowAbsolute) + writeR1C1Axis('C', column, isColumnAbsolute);
}

std::string writeSheet(std::string_view name) {
  if (isPlainSheetName(name)) {
    return std::string(name) + '!';
  }
  std::string quoted = "'";
  for (char const c : name) {
    quoted.append(c == '\'' ? 2 : 1, c);
  }
  return quoted + "'!";
}

}  // namespace Zorv::Formulas::AddressText
