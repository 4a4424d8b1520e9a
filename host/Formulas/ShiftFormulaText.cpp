#include "Formulas/ShiftFormulaText.h"

#include <utility>
#include <vector>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/Parsing/Lexer.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

namespace A1Notation = DOM::A1Notation;

using A1Notation::Coordinate;

/// Offsets in columns and rows.
struct Offsets {
  long column = 0;
  long row = 0;
};

/// Cuts a whole formula into tokens. Throws FormulaParseError.
std::vector<Token> readTokens(std::string_view text) {
  std::vector<Token> tokens;
  for (Lexer lexer(text, 0); lexer.peekKind() != TokenKind::End;) {
    tokens.push_back(lexer.take());
  }
  return tokens;
}

/// False where the coordinate leaves the sheet.
bool move(Coordinate& coordinate, long offset, unsigned long size) noexcept {
  if (coordinate.isRelative) {
    long const moved = static_cast<long>(coordinate.position) + offset;
    if (moved < 0 || moved >= static_cast<long>(size)) {
      return false;
    }
    coordinate.position = static_cast<std::uint32_t>(moved);
  }
  return true;
}

/// The text of a whole column or row: a cell's text without the other coordinate.
std::string toColumnText(Coordinate column) {
  std::string text = A1Notation::toText({.row = {}, .column = column});
  text.pop_back();
  return text;
}

std::string toRowText(Coordinate row) {
  return (row.isRelative ? "" : "$") + std::to_string(row.position + 1);
}

/// Tokens of one formula, with moved references.
class TokenShift {
public:
  TokenShift(std::vector<Token> tokens, Offsets offsets) noexcept
      : _tokens(std::move(tokens)), _offsets(offsets) {}

  /// Nothing if a reference leaves the sheet.
  [[nodiscard]] std::optional<std::string> apply(std::string_view text) {
    std::string result;
    std::size_t copied = 0;
    for (std::size_t at = 0; at < _tokens.size(); ++at) {
      auto const moved = moveToken(at);
      if (!moved) {
        return std::nullopt;
      }
      if (!moved->empty()) {
        result += text.substr(copied, _tokens[at].position - copied);
        result += *moved;
        copied = _tokens[at].end();
      }
    }
    result += text.substr(copied);
    return result;
  }

private:
  [[nodiscard]] TokenKind kindAt(std::size_t at) const noexcept {
    return at < _tokens.size() ? _tokens[at].kind : TokenKind::End;
  }

  /// The new text of a token, empty for one that stays; nothing if it leaves the sheet.
  [[nodiscard]] std::optional<std::string> moveToken(std::size_t at) const {
    Token const& token = _tokens[at];
    bool const isWord = token.kind == TokenKind::Identifier || token.kind == TokenKind::Number;
    if (!isWord || isOther(at)) {
      return std::string();
    }
    if (auto const cell = A1Notation::readCell(token.text);
        cell.shape == A1Notation::Shape::Inside) {
      return moveCell(cell.cell);
    }
    if (auto const column = A1Notation::readColumn(token.text);
        column && pairsWith<&A1Notation::readColumn>(at)) {
      return moveLine(*column, _offsets.column, DOM::Table::columnCount, &toColumnText);
    }
    if (auto const row = A1Notation::readRow(token.text);
        row && pairsWith<&A1Notation::readRow>(at)) {
      return moveLine(*row, _offsets.row, DOM::Table::rowCount, &toRowText);
    }
    return std::string();
  }

  /// A function's name, a sheet's name, or a table's name before its columns.
  [[nodiscard]] bool isOther(std::size_t at) const noexcept {
    TokenKind const next = kindAt(at + 1);
    bool const isAdjacent = at + 1 < _tokens.size() && !_tokens[at + 1].followsSpace;
    return next == TokenKind::Exclamation ||
           (isAdjacent && (next == TokenKind::OpenParenthesis || next == TokenKind::Bracketed));
  }

  /// True for the two ends of `A:C` and `1:3`.
  template <auto read>
  [[nodiscard]] bool pairsWith(std::size_t at) const noexcept {
    bool const isFirst = kindAt(at + 1) == TokenKind::Colon && at + 2 < _tokens.size() &&
                         read(_tokens[at + 2].text).has_value();
    bool const isSecond =
        at >= 2 && kindAt(at - 1) == TokenKind::Colon && read(_tokens[at - 2].text).has_value();
    return isFirst || isSecond;
  }

  [[nodiscard]] std::optional<std::string> moveCell(A1Notation::Cell cell) const {
    bool const isInside = move(cell.column, _offsets.column, DOM::Table::columnCount) &&
                          move(cell.row, _offsets.row, DOM::Table::rowCount);
    return isInside ? std::optional(A1Notation::toText(cell)) : std::nullopt;
  }

  [[nodiscard]] static std::optional<std::string> moveLine(Coordinate line, long offset,
                                                           unsigned long size,
                                                           std::string (*toText)(Coordinate)) {
    return move(line, offset, size) ? std::optional(toText(line)) : std::nullopt;
  }

  std::vector<Token> _tokens;
  Offsets _offsets;
};

}  // namespace

std::optional<std::string> shiftFormulaText(std::string_view text, int columnOffset,
                                            int rowOffset) {
  std::string_view const formula = trimSpaces(text);
  try {
    return TokenShift(readTokens(formula), {columnOffset, rowOffset}).apply(formula);
  } catch (FormulaParseError const&) {
    return std::nullopt;
  }
}

}  // namespace Zorv::Formulas
