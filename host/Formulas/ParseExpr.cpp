#include "Formulas/ParseExpr.h"

#include <algorithm>

#include <fmt/format.h>

#include "Formulas/Parsing/Characters.h"
#include "Formulas/Parsing/Parser.h"

namespace Zorv::Formulas {

namespace {

constexpr std::ptrdiff_t maximalLength = 8192;

/// How many characters a UTF-8 text has: its bytes but those that continue a character.
std::ptrdiff_t countCharacters(std::string_view text) noexcept {
  return std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; });
}

std::size_t findStart(std::string_view text) noexcept {
  std::size_t start = 0;
  while (start < text.size() && isSpace(text[start])) {
    ++start;
  }
  return start < text.size() && text[start] == '=' ? start + 1 : start;
}

}  // namespace

FormulaParseError::FormulaParseError(std::string const& reason, std::size_t position)
    : BaseRuntimeError(fmt::format("{} at position {}", reason, position)),
      _reason(reason),
      _position(position) {}

FormulaParseError::~FormulaParseError() = default;

DOM::FormulaSyntaxTree::Expr parseExpr(std::string_view text) {
  if (countCharacters(text) > maximalLength) {
    throw FormulaParseError(fmt::format("the formula is longer than {} characters", maximalLength),
                            0);
  }
  return Parser(text, findStart(text)).parse();
}

}  // namespace Zorv::Formulas
