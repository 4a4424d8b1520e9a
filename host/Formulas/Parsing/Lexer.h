#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "DOM/FormulaSyntaxTree/Node.h"

namespace Zorv::Formulas {

enum class TokenKind : std::uint8_t {
  End,
  Number,
  String,
  Error,
  Identifier,   ///< a name, a cell, a column, or a row with a dollar sign
  QuotedSheet,  ///< `'...'`, always before an exclamation mark
  Bracketed,    ///< `[...]`, with the brackets inside it matched
  Operator,
  OpenParenthesis,
  CloseParenthesis,
  OpenBrace,
  CloseBrace,
  Comma,
  Semicolon,
  Colon,
  Exclamation,
  At,
  Hash,
};

/// A piece of a formula's text.
struct Token {
  TokenKind kind = TokenKind::End;
  DOM::FormulaSyntaxTree::Operator op = DOM::FormulaSyntaxTree::Operator::None;
  std::size_t position = 0;  ///< the bytes of the text before it
  std::string_view text;     ///< as written
  bool followsSpace = false;

  [[nodiscard]] std::size_t end() const noexcept { return position + text.size(); }
};

/// Cuts a formula's text into tokens, one token ahead. Borrows the text.
class Lexer {
public:
  /// Throws FormulaParseError as take() does.
  Lexer(std::string_view text, std::size_t start);

  [[nodiscard]] Token const& peek() const noexcept { return _next; }
  [[nodiscard]] TokenKind peekKind() const noexcept { return _next.kind; }
  /// True where the next token is of a kind and follows without a space.
  [[nodiscard]] bool isAdjacent(TokenKind kind) const noexcept {
    return _next.kind == kind && !_next.followsSpace;
  }
  /// The token after the next one.
  [[nodiscard]] Token peekSecond() const { return read(_next.end()); }

  /// The next token, which is then consumed. Throws FormulaParseError where the text after it
  /// begins no token.
  Token take();
  /// Takes the next token if it is of a kind.
  bool takeIf(TokenKind kind);
  /// Throws FormulaParseError unless the next token is of a kind; `what` names it.
  Token expect(TokenKind kind, char const* what);

  /// Throws FormulaParseError at the next token.
  [[noreturn]] void fail(std::string const& reason) const;

private:
  [[nodiscard]] Token read(std::size_t position) const;
  [[nodiscard]] std::size_t findNumberEnd(std::size_t position) const noexcept;
  [[nodiscard]] std::size_t findQuotedEnd(std::size_t position, char quote) const;
  [[nodiscard]] std::size_t findBracketedEnd(std::size_t position) const;
  [[nodiscard]] std::size_t findErrorEnd(std::size_t position) const;
  [[nodiscard]] std::size_t findIdentifierEnd(std::size_t position) const noexcept;
  [[nodiscard]] Token readLiteral(Token token) const;
  [[nodiscard]] Token readSign(Token token) const;

  std::string_view _text;
  Token _next;
};

}  // namespace Zorv::Formulas
