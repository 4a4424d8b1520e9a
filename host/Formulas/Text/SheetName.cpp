#include "Formulas/Text/SheetName.h"

#include <algorithm>

#include "DOM/A1Notation.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

bool isPlainSheetName(std::string_view name) {
  auto const isPlain = [](char c) {
    return isIdentifierPart(c) && c != '$' && c != '?' && c != '\\';
  };
  bool const isIdentifier =
      name.empty() || (isIdentifierStart(name.front()) && std::ranges::all_of(name, isPlain));
  return isIdentifier && DOM::A1Notation::readCell(name).shape == DOM::A1Notation::Shape::Other;
}

}  // namespace

std::string writeSheetPrefix(std::string_view name) {
  if (isPlainSheetName(name)) {
    return std::string(name) + '!';
  }
  std::string quoted = "'";
  for (char const c : name) {
    quoted.append(c == '\'' ? 2 : 1, c);
  }
  return quoted + "'!";
}

}  // namespace Zorv::Formulas
