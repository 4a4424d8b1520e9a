#include "Formulas/Parsing/ParseFormula.h"

#include <cstddef>

#include <fmt/format.h>

#include "Formulas/FormulaParseError.h"
#include "Formulas/Parsing/Parser.h"
#include "Formulas/Text/Characters.h"
#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

namespace {

/// The index of a formula's first byte, behind spaces and a leading `=`.
std::size_t findStart(std::string_view text) noexcept {
  std::size_t start = 0;
  while (start < text.size() && isSpace(text[start])) {
    ++start;
  }
  return start < text.size() && text[start] == '=' ? start + 1 : start;
}

}  // namespace

DOM::FormulaSyntaxTree::Expr parseFormula(std::string_view text, FunctionTable const& functions,
                                          Whole whole) {
  constexpr std::size_t maximalLength = 8192;
  if (text.size() > maximalLength && countCharacters(text) > maximalLength) {
    throw FormulaParseError(fmt::format("the formula is longer than {} characters", maximalLength),
                            0);
  }
  return Parser(text, findStart(text), functions).parse(whole);
}

}  // namespace Zorv::Formulas
