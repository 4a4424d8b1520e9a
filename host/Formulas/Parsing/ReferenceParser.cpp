// The part of the parser that reads references.

#include <optional>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/Parsing/Parser.h"
#include "Formulas/Parsing/StructuredReferenceText.h"
#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

namespace {

namespace A1Notation = DOM::A1Notation;

using DOM::A1Notation::Coordinate;
using DOM::A1Notation::Shape;
using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::StructuredReference;

constexpr auto lastRowOfSheet = static_cast<std::uint32_t>(DOM::Table::rowCount - 1);
constexpr auto lastColumnOfSheet = static_cast<std::uint32_t>(DOM::Table::columnCount - 1);

void setFirst(CellReference& reference, A1Notation::Cell const& cell) noexcept {
  reference.firstRow = cell.row.position;
  reference.firstRowIsRelative = cell.row.isRelative;
  reference.firstColumn = cell.column.position;
  reference.firstColumnIsRelative = cell.column.isRelative;
}

void setLast(CellReference& reference, A1Notation::Cell const& cell) noexcept {
  reference.lastRow = cell.row.position;
  reference.lastRowIsRelative = cell.row.isRelative;
  reference.lastColumn = cell.column.position;
  reference.lastColumnIsRelative = cell.column.isRelative;
}

/// A range from the sheet's first row to its last one is made of whole columns, however it is
/// written, and does not move up and down; the same for whole rows.
void fixWholeLines(CellReference& reference) noexcept {
  if (reference.firstRow == 0 && reference.lastRow == lastRowOfSheet) {
    reference.firstRowIsRelative = reference.lastRowIsRelative = false;
  }
  if (reference.firstColumn == 0 && reference.lastColumn == lastColumnOfSheet) {
    reference.firstColumnIsRelative = reference.lastColumnIsRelative = false;
  }
}

CellReference makeColumns(Coordinate first, Coordinate last) noexcept {
  CellReference reference;
  reference.lastRow = lastRowOfSheet;
  reference.firstColumn = first.position;
  reference.firstColumnIsRelative = first.isRelative;
  reference.lastColumn = last.position;
  reference.lastColumnIsRelative = last.isRelative;
  fixWholeLines(reference);
  return reference;
}

CellReference makeRows(Coordinate first, Coordinate last) noexcept {
  CellReference reference;
  reference.lastColumn = lastColumnOfSheet;
  reference.firstRow = first.position;
  reference.firstRowIsRelative = first.isRelative;
  reference.lastRow = last.position;
  reference.lastRowIsRelative = last.isRelative;
  fixWholeLines(reference);
  return reference;
}

/// A sheet's name without its quotes; a doubled apostrophe means one.
std::string unquoteSheet(std::string_view quoted) {
  std::string name;
  for (std::size_t i = 1; i + 1 < quoted.size(); ++i) {
    name += quoted[i];
    i += quoted[i] == '\'' ? 1 : 0;
  }
  return name;
}

}  // namespace

/// Reads cells, whole columns or whole rows that begin with a token already taken. Throws for a
/// cell off the sheet.
bool Parser::parseCells(Token const& first, std::uint32_t sheet, Subtree& result) {
  if (parseWholeColumns(first, sheet, result) || parseWholeRows(first, sheet, result)) {
    return true;
  }
  A1Notation::CellText const cell = A1Notation::readCell(first.text);
  if (cell.shape == Shape::Other) {
    return false;
  }
  bool const mayBeName = cell.shape == Shape::PastColumns && sheet == noIndex &&
                         first.text.find('$') == std::string_view::npos &&
                         _lexer.peekKind() != TokenKind::Colon;
  if (mayBeName) {
    return false;
  }
  if (cell.shape != Shape::Inside) {
    throw FormulaParseError("a reference off the sheet", first.position);
  }
  CellReference reference;
  reference.sheet = sheet;
  setFirst(reference, cell.cell);
  setLast(reference, cell.cell);
  result = parseCellOrArea(reference);
  return true;
}

/// Joins `A1:B2` into one reference; other uses of the colon are operators.
Subtree Parser::parseCellOrArea(CellReference reference) {
  if (_lexer.peekKind() != TokenKind::Colon) {
    return _builder.addReference(reference);
  }
  Token const second = _lexer.peekSecond();
  A1Notation::CellText const corner = A1Notation::readCell(second.text);
  if (second.kind != TokenKind::Identifier || corner.shape == Shape::Other) {
    return _builder.addReference(reference);
  }
  if (corner.shape != Shape::Inside) {
    throw FormulaParseError("a reference off the sheet", second.position);
  }
  _lexer.take();
  Token const after = _lexer.peekSecond();
  bool const isOther = after.kind == TokenKind::Exclamation ||
                       (after.kind == TokenKind::OpenParenthesis && !after.followsSpace);
  if (isOther) {
    // `A1:B1!C1` or `A1:LOG10(...)`: the second corner is no plain cell.
    Subtree const left = _builder.addReference(reference);
    Subtree const right = parseSpill();
    return checkDepth(_builder.addBinary(Operator::Range, left, right));
  }
  _lexer.take();
  setLast(reference, corner.cell);
  fixWholeLines(reference);
  return _builder.addReference(reference);
}

bool Parser::parseWholeColumns(Token const& first, std::uint32_t sheet, Subtree& result) {
  auto const from = A1Notation::readColumn(first.text);
  if (!from || _lexer.peekKind() != TokenKind::Colon) {
    return false;
  }
  Token const second = _lexer.peekSecond();
  auto const to = A1Notation::readColumn(second.text);
  if (second.kind != TokenKind::Identifier || !to) {
    return false;
  }
  _lexer.take();
  _lexer.take();
  CellReference reference = makeColumns(*from, *to);
  reference.sheet = sheet;
  result = _builder.addReference(reference);
  return true;
}

/// Rows of which the first has a dollar sign, and so is no number.
bool Parser::parseWholeRows(Token const& first, std::uint32_t sheet, Subtree& result) {
  auto const from = A1Notation::readRow(first.text);
  if (!from || _lexer.peekKind() != TokenKind::Colon) {
    return false;
  }
  _lexer.take();
  Token const second = _lexer.peek();
  auto const to = A1Notation::readRow(second.text);
  if (!to) {
    _lexer.fail("a row of the sheet is missing");
  }
  _lexer.take();
  CellReference reference = makeRows(*from, *to);
  reference.sheet = sheet;
  result = _builder.addReference(reference);
  return true;
}

Subtree Parser::parseRowsFromNumber() {
  Token const first = _lexer.take();
  Subtree rows;
  if (!parseWholeRows(first, noIndex, rows)) {
    throw FormulaParseError("a row of the sheet is missing", first.position);
  }
  return rows;
}

/// Parses the rest of a reference behind a sheet's name and its exclamation mark. The name is empty
/// for a deleted sheet; see CellReference for sheets of other workbooks and ranges of sheets.
Subtree Parser::parseAfterSheet(std::string sheet) {
  if (_lexer.peekKind() == TokenKind::Error) {
    return parseError();
  }
  bool const isElsewhere = sheet.empty() || sheet.find('[') != std::string::npos;
  std::uint32_t const sheetText = _builder.storeText(std::move(sheet));
  bool const isNumber = _lexer.peekKind() == TokenKind::Number;
  Token const token =
      isNumber ? _lexer.take() : _lexer.expect(TokenKind::Identifier, "a reference");
  Subtree cells;
  if (parseCells(token, sheetText, cells)) {
    return cells;
  }
  if (isNumber) {
    throw FormulaParseError("a reference is missing", token.position);
  }
  if (_lexer.isAdjacent(TokenKind::OpenParenthesis)) {
    return parseCall(token);
  }
  std::string name(token.text);
  if (_lexer.isAdjacent(TokenKind::Bracketed)) {
    return parseStructured(isElsewhere ? sheetText : _builder.storeText(std::move(name)));
  }
  return _builder.addName({.name = _builder.storeText(std::move(name)), .sheet = sheetText});
}

Subtree Parser::parseQuotedSheet() {
  std::string sheet = unquoteSheet(_lexer.take().text);
  _lexer.expect(TokenKind::Exclamation, "an exclamation mark");
  return parseAfterSheet(std::move(sheet));
}

/// `[1]Sheet1!A1`, `[1]!Name`, or a structured reference without its table's name.
Subtree Parser::parseBracketed() {
  Token const after = _lexer.peekSecond();
  bool const isBook = !after.followsSpace &&
                      (after.kind == TokenKind::Identifier || after.kind == TokenKind::Exclamation);
  if (!isBook) {
    return parseStructured(noIndex);
  }
  std::string sheet(_lexer.take().text);
  if (_lexer.peekKind() == TokenKind::Identifier) {
    sheet += _lexer.take().text;
  }
  if (_lexer.takeIf(TokenKind::Colon)) {
    sheet += ':';
    sheet += _lexer.expect(TokenKind::Identifier, "a sheet").text;
  }
  _lexer.expect(TokenKind::Exclamation, "an exclamation mark");
  return parseAfterSheet(std::move(sheet));
}

Subtree Parser::parseStructured(std::uint32_t list) {
  Token const token = _lexer.take();
  StructuredReferenceText const text = readStructuredReference(token.text, token.position);
  StructuredReference reference{.list = list,
                                .headers = text.headers,
                                .data = text.data,
                                .totals = text.totals,
                                .thisRow = text.thisRow};
  if (text.firstColumn) {
    reference.firstColumn = _builder.storeText(*text.firstColumn);
    reference.lastColumn = _builder.storeText(*text.lastColumn);
  }
  return _builder.addStructuredReference(reference);
}

/// True where a range of sheets is next: `First:Last!A1`.
bool Parser::isSheetRangeNext() const {
  if (_lexer.peekSecond().kind != TokenKind::Colon ||
      A1Notation::readCell(_lexer.peek().text).shape == Shape::Inside) {
    return false;
  }
  Lexer ahead = _lexer;
  ahead.take();
  ahead.take();
  return ahead.peekKind() == TokenKind::Identifier &&
         ahead.peekSecond().kind == TokenKind::Exclamation;
}

Subtree Parser::parseSheetRange() {
  std::string sheets;
  while (_lexer.peekKind() != TokenKind::Exclamation) {
    sheets += _lexer.take().text;
  }
  _lexer.take();
  return parseAfterSheet(std::move(sheets));
}

bool Parser::isReferenceNext() const {
  switch (_lexer.peekKind()) {
    case TokenKind::Identifier:
    case TokenKind::QuotedSheet:
    case TokenKind::Bracketed:
    case TokenKind::OpenParenthesis:
    case TokenKind::At:
      return true;
    case TokenKind::Number:
      // Whole rows: `A:A 1:1`.
      return _lexer.peekSecond().kind == TokenKind::Colon;
    default:
      return false;
  }
}

bool Parser::mayBeReference(Subtree tree) const noexcept {
  auto const& node = _builder.getNode(tree);
  switch (node.kind) {
    case NodeKind::Reference:
    case NodeKind::StructuredReference:
    case NodeKind::Name:
    case NodeKind::LocalName:
    case NodeKind::Error:
    case NodeKind::Function:
    case NodeKind::UnknownFunction:
    case NodeKind::Call:
      return true;
    case NodeKind::Unary:
      return node.op == Operator::Spill || node.op == Operator::Single;
    case NodeKind::Binary:
      return isReferenceOperator(node.op);
    default:
      return false;
  }
}

}  // namespace Zorv::Formulas
