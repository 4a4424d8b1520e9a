#include "OfficeUtils/NumberFormatParser.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <utility>

#include "OfficeUtils/NumberFormatLexer.h"

namespace Zorv::OfficeUtils::NumberFormatCode {

namespace {

bool isOfDates(Token const& token) noexcept { return token.kind >= TokenKind::Year; }

bool contains(std::vector<Token> const& tokens, TokenKind kind) {
  return std::ranges::find(tokens, kind, &Token::kind) != tokens.end();
}

SectionKind findKind(std::vector<Token> const& tokens) {
  if (std::ranges::any_of(tokens, isOfDates)) {
    return SectionKind::DateTime;
  }
  if (contains(tokens, TokenKind::AnyText)) {
    return SectionKind::Text;
  }
  return contains(tokens, TokenKind::General) ? SectionKind::General : SectionKind::Number;
}

/// Turns tokens without a meaning in a date or text section into literals.
void makeLiterals(std::vector<Token>& tokens) {
  for (Token& token : tokens) {
    if (TokenKind::Digit <= token.kind && token.kind < TokenKind::Year) {
      token.kind = TokenKind::Literal;
    }
  }
}

/// Turns months into minutes: the letter m means minutes after hours and before seconds.
void findMinutes(std::vector<Token>& tokens) {
  Token const* previous = nullptr;
  Token* month = nullptr;
  for (Token& token : tokens) {
    if (!isOfDates(token) || token.kind == TokenKind::HalfOfDay) {
      continue;
    }
    bool const isShort = token.kind == TokenKind::Month && token.count <= 2;
    bool const isBehindHours = previous != nullptr && (previous->kind == TokenKind::Hour ||
                                                       previous->kind == TokenKind::ElapsedHours);
    if (isShort && isBehindHours) {
      token.kind = TokenKind::Minute;
    }
    bool const isSeconds =
        token.kind == TokenKind::Second || token.kind == TokenKind::ElapsedSeconds;
    if (isSeconds && month != nullptr) {
      month->kind = TokenKind::Minute;
    }
    month = isShort && token.kind == TokenKind::Month ? &token : nullptr;
    previous = &token;
  }
}

/// Removes the commas. A comma between digits groups them; each comma after the last digit divides
/// by a thousand.
void readCommas(Section& section) {
  std::vector<Token> tokens;
  bool isBehindPoint = false;
  for (std::size_t i = 0; i < section.tokens.size(); ++i) {
    Token& token = section.tokens[i];
    isBehindPoint = isBehindPoint || token.kind == TokenKind::Point;
    if (token.kind != TokenKind::Comma) {
      tokens.push_back(std::move(token));
      continue;
    }
    if (tokens.empty() || !isDigit(tokens.back())) {
      token.kind = TokenKind::Literal;
      tokens.push_back(std::move(token));
      continue;
    }
    auto const isComma = [](Token const& other) { return other.kind == TokenKind::Comma; };
    auto const next = std::find_if_not(section.tokens.begin() + static_cast<std::ptrdiff_t>(i),
                                       section.tokens.end(), isComma);
    if (next == section.tokens.end() || !isDigit(*next)) {
      section.powerOfTen -= 3;
    } else {
      section.hasGroups = section.hasGroups || !isBehindPoint;
    }
  }
  section.tokens = std::move(tokens);
}

/// The number that the tokens after the slash spell out, such as 16; 0 if they spell none.
double readDenominator(std::vector<Token> const& tokens, std::size_t first, std::size_t end) {
  std::string text;
  for (std::size_t i = first; i < end; ++i) {
    text += isDigit(tokens[i]) ? std::string(1, tokens[i].symbol) : tokens[i].text;
  }
  double number = 0.0;
  auto const* const last = text.data() + text.size();
  auto const read = std::from_chars(text.data(), last, number, std::chars_format::fixed);
  return read.ptr == last ? number : 0.0;
}

bool isFigure(Token const& token) noexcept {
  return token.kind == TokenKind::Literal && token.text.size() == 1 && '1' <= token.text[0] &&
         token.text[0] <= '9';
}

/// Finds the tokens of a fraction. A slash without digits on both sides is a literal.
void readFraction(Section& section) {
  auto& tokens = section.tokens;
  auto const found = std::ranges::find(tokens, TokenKind::Slash, &Token::kind);
  if (found == tokens.end()) {
    return;
  }
  FractionLayout layout;
  layout.slash = static_cast<std::size_t>(found - tokens.begin());
  layout.numerator = layout.slash;
  while (layout.numerator != 0 && isDigit(tokens[layout.numerator - 1])) {
    --layout.numerator;
  }
  layout.end = layout.slash + 1;
  while (layout.end != tokens.size() &&
         (isDigit(tokens[layout.end]) || isFigure(tokens[layout.end]))) {
    ++layout.end;
  }
  bool const hasDenominator = layout.end != layout.slash + 1;
  if (layout.numerator == layout.slash || !hasDenominator) {
    found->kind = TokenKind::Literal;
    return;
  }
  auto const wholeEnd = tokens.begin() + static_cast<std::ptrdiff_t>(layout.numerator);
  layout.hasWhole = std::any_of(tokens.begin(), wholeEnd, isDigit);
  if (isFigure(tokens[layout.slash + 1])) {
    layout.fixedDenominator = readDenominator(tokens, layout.slash + 1, layout.end);
  }
  section.fraction = layout;
}

/// Turns all tokens of a kind but the first into literals.
void keepFirst(std::vector<Token>& tokens, TokenKind kind) {
  bool isFirst = true;
  for (Token& token : tokens) {
    if (token.kind == kind && !std::exchange(isFirst, false)) {
      token.kind = TokenKind::Literal;
    }
  }
}

void readNumberSection(Section& section) {
  readCommas(section);
  auto& tokens = section.tokens;
  for (TokenKind const kind : {TokenKind::Point, TokenKind::Exponent, TokenKind::Slash}) {
    keepFirst(tokens, kind);
  }
  section.powerOfTen +=
      static_cast<int>(2 * std::ranges::count(tokens, TokenKind::Percent, &Token::kind));
  auto const exponent = std::ranges::find(tokens, TokenKind::Exponent, &Token::kind);
  if (exponent != tokens.end()) {
    section.exponent = static_cast<std::size_t>(exponent - tokens.begin());
  }
  readFraction(section);
}

void completeSection(Section& section) {
  section.kind = findKind(section.tokens);
  if (section.kind == SectionKind::Number) {
    readNumberSection(section);
    return;
  }
  makeLiterals(section.tokens);
  if (section.kind == SectionKind::DateTime) {
    findMinutes(section.tokens);
  }
}

}  // namespace

bool Condition::holds(double number) const noexcept {
  switch (comparison) {
    case Comparison::Less:
      return number < operand;
    case Comparison::LessOrEqual:
      return number <= operand;
    case Comparison::Equal:
      return number == operand;
    case Comparison::NotEqual:
      return number != operand;
    case Comparison::GreaterOrEqual:
      return number >= operand;
    default:
      return number > operand;
  }
}

bool Condition::isOfNegatives() const noexcept {
  switch (comparison) {
    case Comparison::Less:
      return operand <= 0.0;
    case Comparison::LessOrEqual:
    case Comparison::Equal:
      return operand < 0.0;
    default:
      return false;
  }
}

std::optional<std::vector<Section>> parseNumberFormat(std::string_view code) {
  constexpr std::size_t maximalSections = 4;
  std::vector<Section> sections;
  Lexer lexer(code);
  do {
    Section& section = sections.emplace_back();
    if (sections.size() > maximalSections || !lexer.readSection(section)) {
      return std::nullopt;
    }
    completeSection(section);
  } while (lexer.takeSeparator());
  return sections;
}

}  // namespace Zorv::OfficeUtils::NumberFormatCode
