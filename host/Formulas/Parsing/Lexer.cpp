#include "Formulas/Parsing/Lexer.h"

#include <algorithm>
#include <array>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Operator;
using FormulaModel::FormulaErrorCode;

constexpr std::array errorCodes = {FormulaErrorCode::Null,         FormulaErrorCode::DivisionByZero,
                                   FormulaErrorCode::Value,        FormulaErrorCode::Reference,
                                   FormulaErrorCode::Name,         FormulaErrorCode::Number,
                                   FormulaErrorCode::NotAvailable, FormulaErrorCode::GettingData,
                                   FormulaErrorCode::Spill,        FormulaErrorCode::Calculation};

struct Sign {
  std::string_view text;
  TokenKind kind;
  Operator op = Operator::None;
};

// A sign comes before its own prefix.
constexpr std::array signs = {
    Sign{"<>", TokenKind::Operator, Operator::NotEqual},
    Sign{"<=", TokenKind::Operator, Operator::LessOrEqual},
    Sign{">=", TokenKind::Operator, Operator::GreaterOrEqual},
    Sign{"<", TokenKind::Operator, Operator::Less},
    Sign{">", TokenKind::Operator, Operator::Greater},
    Sign{"=", TokenKind::Operator, Operator::Equal},
    Sign{"+", TokenKind::Operator, Operator::Add},
    Sign{"-", TokenKind::Operator, Operator::Subtract},
    Sign{"*", TokenKind::Operator, Operator::Multiply},
    Sign{"/", TokenKind::Operator, Operator::Divide},
    Sign{"^", TokenKind::Operator, Operator::Power},
    Sign{"&", TokenKind::Operator, Operator::Concatenate},
    Sign{"%", TokenKind::Operator, Operator::Percent},
    Sign{"(", TokenKind::OpenParenthesis},
    Sign{")", TokenKind::CloseParenthesis},
    Sign{"{", TokenKind::OpenBrace},
    Sign{"}", TokenKind::CloseBrace},
    Sign{",", TokenKind::Comma},
    Sign{";", TokenKind::Semicolon},
    Sign{":", TokenKind::Colon},
    Sign{"!", TokenKind::Exclamation},
    Sign{"@", TokenKind::At},
    Sign{"#", TokenKind::Hash},
};

}  // namespace

Lexer::Lexer(std::string_view text, std::size_t start) : _text(text), _next(read(start)) {}

Token Lexer::take() {
  Token const token = _next;
  _next = read(token.end());
  return token;
}

bool Lexer::takeIf(TokenKind kind) {
  if (_next.kind != kind) {
    return false;
  }
  take();
  return true;
}

Token Lexer::expect(TokenKind kind, char const* what) {
  if (_next.kind != kind) {
    fail(std::string(what) + " is missing");
  }
  return take();
}

void Lexer::fail(std::string const& reason) const {
  throw FormulaParseError(reason, _next.position);
}

Token Lexer::read(std::size_t position) const {
  Token token;
  std::size_t const start = position;
  while (position < _text.size() && isSpace(_text[position])) {
    ++position;
  }
  token.followsSpace = position != start;
  token.position = position;
  return position == _text.size() ? token : readLiteral(token);
}

Token Lexer::readLiteral(Token token) const {
  std::size_t const at = token.position;
  char const first = _text[at];
  char const second = at + 1 < _text.size() ? _text[at + 1] : '\0';
  auto const finish = [&](TokenKind kind, std::size_t end) {
    token.kind = kind;
    token.text = _text.substr(at, end - at);
    return token;
  };
  if (isAsciiDigit(first) || (first == '.' && isAsciiDigit(second))) {
    return finish(TokenKind::Number, findNumberEnd(at));
  }
  if (first == '"') {
    return finish(TokenKind::String, findQuotedEnd(at, '"'));
  }
  if (first == '\'') {
    return finish(TokenKind::QuotedSheet, findQuotedEnd(at, '\''));
  }
  if (first == '[') {
    return finish(TokenKind::Bracketed, findBracketedEnd(at));
  }
  if (first == '#' && isAsciiLetter(second)) {
    return finish(TokenKind::Error, findErrorEnd(at));
  }
  if (isIdentifierStart(first)) {
    return finish(TokenKind::Identifier, findIdentifierEnd(at));
  }
  return readSign(token);
}

Token Lexer::readSign(Token token) const {
  std::string_view const rest = _text.substr(token.position);
  for (Sign const& sign : signs) {
    if (rest.starts_with(sign.text)) {
      token.kind = sign.kind;
      token.op = sign.op;
      token.text = rest.substr(0, sign.text.size());
      return token;
    }
  }
  throw FormulaParseError("an unexpected character", token.position);
}

std::size_t Lexer::findNumberEnd(std::size_t position) const noexcept {
  auto const skipDigits = [this](std::size_t at) {
    while (at < _text.size() && isAsciiDigit(_text[at])) {
      ++at;
    }
    return at;
  };
  std::size_t end = skipDigits(position);
  if (end < _text.size() && _text[end] == '.') {
    end = skipDigits(end + 1);
  }
  if (end < _text.size() && toAsciiUpper(_text[end]) == 'E') {
    std::size_t exponent = end + 1;
    if (exponent < _text.size() && (_text[exponent] == '+' || _text[exponent] == '-')) {
      ++exponent;
    }
    std::size_t const exponentEnd = skipDigits(exponent);
    end = exponentEnd == exponent ? end : exponentEnd;
  }
  return end;
}

std::size_t Lexer::findQuotedEnd(std::size_t position, char quote) const {
  for (std::size_t at = position + 1; at < _text.size(); ++at) {
    if (_text[at] != quote) {
      continue;
    }
    // A doubled quote means one.
    if (at + 1 < _text.size() && _text[at + 1] == quote) {
      ++at;
    } else {
      return at + 1;
    }
  }
  throw FormulaParseError("a quote that does not end", position);
}

std::size_t Lexer::findBracketedEnd(std::size_t position) const {
  std::size_t open = 0;
  for (std::size_t at = position; at < _text.size(); ++at) {
    char const c = _text[at];
    if (c == '\'') {
      ++at;  // the apostrophe takes the meaning of the character after it away
    } else if (c == '[') {
      ++open;
    } else if (c == ']' && --open == 0) {
      return at + 1;
    }
  }
  throw FormulaParseError("a bracket that does not close", position);
}

std::size_t Lexer::findErrorEnd(std::size_t position) const {
  std::string_view const rest = _text.substr(position);
  for (FormulaErrorCode const code : errorCodes) {
    std::string_view const text = FormulaModel::toText(code);
    if (rest.size() >= text.size() && std::ranges::equal(rest.substr(0, text.size()), text, {},
                                                         [](char c) { return toAsciiUpper(c); })) {
      return position + text.size();
    }
  }
  throw FormulaParseError("an unknown error value", position);
}

std::size_t Lexer::findIdentifierEnd(std::size_t position) const noexcept {
  while (position < _text.size() && isIdentifierPart(_text[position])) {
    ++position;
  }
  return position;
}

}  // namespace Zorv::Formulas
