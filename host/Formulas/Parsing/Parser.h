#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Parsing/ExprBuilder.h"
#include "Formulas/Parsing/Lexer.h"
#include "Formulas/Parsing/LocalNames.h"
#include "Formulas/Parsing/ParseFormula.h"
#include "Formulas/Values/FunctionTable.h"

namespace Zorv::Formulas {

/// Parses one formula by the precedence of operators (ISO/IEC 29500-1, 18.17.2.2): reference
/// operators, signs, `%`, `^`, `*` and `/`, `+` and `-`, `&`, comparisons; those of one rank from
/// the left. Borrows the text and the table.
class Parser {
public:
  /// `start` is the index of the formula's first byte.
  Parser(std::string_view text, std::size_t start, FunctionTable const& functions)
      : _functions(functions), _lexer(text, start) {}

  /// Throws FormulaParseError where the text is no formula.
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr parse(Whole whole);

private:
  using Operator = DOM::FormulaSyntaxTree::Operator;

  // From the loosest binding to the tightest.
  Subtree parseUnion();
  Subtree parseExpression();
  Subtree parseBinary(int minimalRank);
  Subtree parseSigned();
  Subtree parsePercent();
  Subtree parseIntersection();
  Subtree parseRange();
  Subtree parseSpill();
  Subtree parsePrimary();
  Subtree parseUncalled();

  Subtree parseNumber();
  Subtree parseText();
  Subtree parseError();
  Subtree parseParenthesised();
  Subtree parseIdentifier();
  Subtree parseName(Token const& name);
  Subtree parseArray();
  Subtree parseArrayElement();
  double takeNumber();

  Subtree parseCall(Token const& name);
  Subtree addCall(Token const& name, std::optional<std::uint16_t> function,
                  std::vector<Subtree> const& arguments);
  Subtree parseArgument();
  std::vector<Subtree> parseArguments();
  std::vector<Subtree> parseLambdaArguments();
  std::vector<Subtree> parseLetArguments();
  Subtree parseCallsOf(Subtree callee);
  [[nodiscard]] bool isLocalNameNext() const;
  [[nodiscard]] bool isLambda(std::uint16_t function) const;
  [[nodiscard]] bool mayBeFunction(Subtree tree) const noexcept;

  // References; in ReferenceParser.cpp.
  bool parseCells(Token const& first, std::uint32_t sheet, Subtree& result);
  Subtree parseCellOrArea(DOM::FormulaSyntaxTree::CellReference reference);
  bool parseWholeColumns(Token const& first, std::uint32_t sheet, Subtree& result);
  bool parseWholeRows(Token const& first, std::uint32_t sheet, Subtree& result);
  Subtree parseRowsFromNumber();
  Subtree parseAfterSheet(std::string sheet);
  Subtree parseQuotedSheet();
  Subtree parseBracketed();
  Subtree parseStructured(std::uint32_t list);
  Subtree parseSheetRange();
  [[nodiscard]] bool isSheetRangeNext() const;
  [[nodiscard]] bool isReferenceNext() const;
  [[nodiscard]] bool mayBeReference(Subtree tree) const noexcept;

  Subtree checkDepth(Subtree tree) const;

  /// Counts the levels of a text's nesting while in scope.
  class Nesting;

  FunctionTable const& _functions;
  Lexer _lexer;
  ExprBuilder _builder;
  LocalNames _localNames;
  std::uint32_t _nesting = 0;
};

}  // namespace Zorv::Formulas
