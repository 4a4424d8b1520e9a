#include "Formulas/Parsing/Parser.h"

#include <array>
#include <charconv>
#include <optional>

#include <fmt/format.h>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::Operator;
using FormulaModel::FormulaErrorCode;

constexpr std::uint32_t maximalNesting = 256;
constexpr int loosestRank = 1;
constexpr int tightestRank = 5;

/// How tightly a binary operator binds, or 0 for what is none.
constexpr int rankOf(Operator op) noexcept {
  switch (op) {
    case Operator::Equal:
    case Operator::NotEqual:
    case Operator::Less:
    case Operator::LessOrEqual:
    case Operator::Greater:
    case Operator::GreaterOrEqual:
      return loosestRank;
    case Operator::Concatenate:
      return 2;
    case Operator::Add:
    case Operator::Subtract:
      return 3;
    case Operator::Multiply:
    case Operator::Divide:
      return 4;
    case Operator::Power:
      return tightestRank;
    default:
      return 0;
  }
}

/// The text between two quotes; a doubled quote means one.
std::string unquote(std::string_view quoted) {
  char const quote = quoted.front();
  std::string text;
  for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
    text += quoted[i];
    if (quoted[i] == quote) {
      ++i;
    }
  }
  return text;
}

/// True for a number's text, without a sign, that cannot mean a number below 1.
bool isLarge(std::string_view text) noexcept {
  std::size_t const significant = text.find_first_not_of("0.");
  bool const hasDigits = significant != std::string_view::npos && isAsciiDigit(text[significant]);
  bool const isSmallExponent = text.find('-') != std::string_view::npos;
  bool const isFraction = text.find('.') < significant;
  return hasDigits && !isSmallExponent &&
         !(isFraction && text.find_first_of("eE") == std::string_view::npos);
}

[[noreturn]] void failNesting(std::size_t position) {
  throw FormulaParseError(fmt::format("the formula nests deeper than {} levels", maximalNesting),
                          position);
}

}  // namespace

class Parser::Nesting {
public:
  explicit Nesting(Parser& parser) : _count(&parser._nesting) {
    if (*_count == maximalNesting) {
      failNesting(parser._lexer.peek().position);
    }
    ++*_count;
  }
  Nesting(Nesting const&) = delete;
  Nesting& operator=(Nesting const&) = delete;
  ~Nesting() { --*_count; }

private:
  std::uint32_t* _count;
};

DOM::FormulaSyntaxTree::Expr Parser::parse(Whole whole) {
  if (_lexer.peekKind() == TokenKind::End) {
    _lexer.fail("the formula is empty");
  }
  whole == Whole::ExpressionOrUnion ? parseUnion() : parseExpression();
  if (_lexer.peekKind() != TokenKind::End) {
    _lexer.fail("an operator is missing");
  }
  return _builder.finish(_functions);
}

Subtree Parser::parseUnion() {
  Subtree tree = parseExpression();
  while (_lexer.takeIf(TokenKind::Comma)) {
    Subtree const right = parseExpression();
    tree = checkDepth(_builder.addBinary(Operator::Union, tree, right));
  }
  return tree;
}

Subtree Parser::parseExpression() {
  Nesting const nesting(*this);
  return parseBinary(loosestRank);
}

Subtree Parser::parseBinary(int minimalRank) {
  if (minimalRank > tightestRank) {
    return parseSigned();
  }
  Subtree left = parseBinary(minimalRank + 1);
  while (rankOf(_lexer.peek().op) == minimalRank) {
    Operator const op = _lexer.take().op;
    Subtree const right = parseBinary(minimalRank + 1);
    left = checkDepth(_builder.addBinary(op, left, right));
  }
  return left;
}

Subtree Parser::parseSigned() {
  Operator const op = _lexer.peek().op;
  if (op != Operator::Add && op != Operator::Subtract) {
    return parsePercent();
  }
  Nesting const nesting(*this);
  _lexer.take();
  Subtree const argument = parseSigned();
  return checkDepth(
      _builder.addUnary(op == Operator::Add ? Operator::Plus : Operator::Negate, argument));
}

Subtree Parser::parsePercent() {
  Subtree tree = parseIntersection();
  while (_lexer.peek().op == Operator::Percent) {
    _lexer.take();
    tree = checkDepth(_builder.addUnary(Operator::Percent, tree));
  }
  return tree;
}

Subtree Parser::parseIntersection() {
  Subtree left = parseRange();
  // A space is an operator only between two references.
  while (_lexer.peek().followsSpace && mayBeReference(left) && isReferenceNext()) {
    Subtree const right = parseRange();
    left = checkDepth(_builder.addBinary(Operator::Intersection, left, right));
  }
  return left;
}

Subtree Parser::parseRange() {
  Subtree left = parseSpill();
  while (_lexer.peekKind() == TokenKind::Colon && mayBeReference(left)) {
    _lexer.take();
    Subtree const right = parseSpill();
    left = checkDepth(_builder.addBinary(Operator::Range, left, right));
  }
  return left;
}

Subtree Parser::parseSpill() {
  if (_lexer.peekKind() == TokenKind::At) {
    Nesting const nesting(*this);
    _lexer.take();
    return checkDepth(_builder.addUnary(Operator::Single, parseSpill()));
  }
  Subtree const tree = parsePrimary();
  if (!_lexer.isAdjacent(TokenKind::Hash) || !mayBeReference(tree)) {
    return tree;
  }
  _lexer.take();
  return checkDepth(_builder.addUnary(Operator::Spill, tree));
}

Subtree Parser::parsePrimary() { return parseCallsOf(parseUncalled()); }

Subtree Parser::parseUncalled() {
  switch (_lexer.peekKind()) {
    case TokenKind::Number:
      return parseNumber();
    case TokenKind::String:
      return parseText();
    case TokenKind::Error:
      return parseError();
    case TokenKind::Identifier:
      return parseIdentifier();
    case TokenKind::QuotedSheet:
      return parseQuotedSheet();
    case TokenKind::Bracketed:
      return parseBracketed();
    case TokenKind::OpenParenthesis:
      return parseParenthesised();
    case TokenKind::OpenBrace:
      return parseArray();
    case TokenKind::End:
      _lexer.fail("the formula ends where a value is wanted");
    default:
      _lexer.fail("a value is missing");
  }
}

double Parser::takeNumber() {
  Token const token = _lexer.expect(TokenKind::Number, "a number");
  double number = 0.0;
  std::from_chars(token.text.data(), token.text.data() + token.text.size(), number);
  // What is too small for a double is left 0; what is too large has digits before the point, or a
  // positive exponent.
  bool const isOutOfRange = number == 0.0 && isLarge(token.text);
  if (isOutOfRange) {
    throw FormulaParseError("a number out of range", token.position);
  }
  return number;
}

Subtree Parser::parseNumber() {
  Token const second = _lexer.peekSecond();
  if (second.kind == TokenKind::Colon) {
    return parseRowsFromNumber();
  }
  return _builder.addNumber(takeNumber());
}

Subtree Parser::parseText() { return _builder.addText(unquote(_lexer.take().text)); }

Subtree Parser::parseError() {
  auto const code = FormulaModel::parseErrorCode(_lexer.take().text);
  // A reference into a deleted sheet: `#REF!A1`.
  if (code == FormulaErrorCode::Reference && _lexer.isAdjacent(TokenKind::Identifier)) {
    return parseAfterSheet({});
  }
  return _builder.addError(*code);
}

Subtree Parser::parseParenthesised() {
  _lexer.take();
  Subtree const tree = parseUnion();
  _lexer.expect(TokenKind::CloseParenthesis, "a closing parenthesis");
  return tree;
}

Subtree Parser::parseIdentifier() {
  if (isSheetRangeNext()) {
    return parseSheetRange();
  }
  Token const token = _lexer.take();
  if (_lexer.isAdjacent(TokenKind::Exclamation)) {
    _lexer.take();
    return parseAfterSheet(std::string(token.text));
  }
  if (_lexer.isAdjacent(TokenKind::OpenParenthesis) && !_localNames.find(token.text)) {
    return parseCall(token);
  }
  if (_lexer.isAdjacent(TokenKind::Bracketed)) {
    return parseStructured(_builder.storeText(std::string(token.text)));
  }
  return parseName(token);
}

Subtree Parser::parseName(Token const& name) {
  Subtree cells;
  if (auto const slot = _localNames.find(name.text)) {
    // `a:b` is two columns whatever names there are, as for spreadsheet programs.
    return parseWholeColumns(name, noIndex, cells) ? cells : _builder.addLocalName(*slot);
  }
  if (parseCells(name, noIndex, cells)) {
    return cells;
  }
  std::string const upper = toAsciiUpper(name.text);
  if (upper == "TRUE" || upper == "FALSE") {
    return _builder.addBoolean(upper == "TRUE");
  }
  if (name.text.find('$') != std::string_view::npos) {
    throw FormulaParseError("a reference off the sheet or out of form", name.position);
  }
  return _builder.addName({.name = _builder.storeText(std::string(name.text))});
}

Subtree Parser::parseArray() {
  Token const brace = _lexer.take();
  std::vector<Subtree> values;
  std::uint32_t rowCount = 0;
  std::size_t columnCount = 0;
  do {
    std::size_t const rowStart = values.size();
    do {
      values.push_back(parseArrayElement());
    } while (_lexer.takeIf(TokenKind::Comma));
    std::size_t const width = values.size() - rowStart;
    columnCount = rowCount == 0 ? width : columnCount;
    if (width != columnCount) {
      throw FormulaParseError("the rows of an array differ in length", brace.position);
    }
    ++rowCount;
  } while (_lexer.takeIf(TokenKind::Semicolon));
  _lexer.expect(TokenKind::CloseBrace, "a closing brace");
  return _builder.addArrayConstant(rowCount, values);
}

Subtree Parser::parseArrayElement() {
  Token const token = _lexer.peek();
  if (token.op == Operator::Add || token.op == Operator::Subtract) {
    _lexer.take();
    double const number = takeNumber();
    return _builder.addNumber(token.op == Operator::Subtract ? -number : number);
  }
  switch (token.kind) {
    case TokenKind::Number:
      return _builder.addNumber(takeNumber());
    case TokenKind::String:
      return parseText();
    case TokenKind::Error:
      return parseError();
    default:
      break;
  }
  std::string const word = toAsciiUpper(token.text);
  if (word != "TRUE" && word != "FALSE") {
    _lexer.fail("a constant is missing");
  }
  _lexer.take();
  return _builder.addBoolean(word == "TRUE");
}

Subtree Parser::checkDepth(Subtree tree) const {
  if (tree.depth > maximalNesting) {
    failNesting(_lexer.peek().position);
  }
  return tree;
}

}  // namespace Zorv::Formulas
