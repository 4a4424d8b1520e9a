#include "Formulas/Parsing/Lexer.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Formulas/FormulaParseError.h"

namespace Zorv::Formulas {

namespace {

struct LexerCase {
  std::string_view text;
  std::vector<TokenKind> kinds;
};

std::vector<TokenKind> readAll(std::string_view text) {
  std::vector<TokenKind> kinds;
  Lexer lexer(text, 0);
  while (lexer.peekKind() != TokenKind::End) {
    kinds.push_back(lexer.take().kind);
  }
  return kinds;
}

TEST(Lexer, CutsATextIntoTokens) {
  using enum TokenKind;
  LexerCase const cases[] = {
      {"1.5e-3", {Number}},
      {".5", {Number}},
      {"\"a\"\"b\"", {String}},
      {"#DIV/0!", {Error}},
      {"$A$1:B2", {Identifier, Colon, Identifier}},
      {"'My sheet'!A1", {QuotedSheet, Exclamation, Identifier}},
      {"Table1[[#All],[A]]", {Identifier, Bracketed}},
      {"SUM(1,2)", {Identifier, OpenParenthesis, Number, Comma, Number, CloseParenthesis}},
      {"{1;2}", {OpenBrace, Number, Semicolon, Number, CloseBrace}},
      {"@A1#", {At, Identifier, Hash}},
      {"", {}},
  };
  for (LexerCase const& test : cases) {
    EXPECT_EQ(readAll(test.text), test.kinds) << test.text;
  }
}

TEST(Lexer, TheLongestOperatorWins) {
  using DOM::FormulaSyntaxTree::Operator;
  std::vector<Operator> operators;
  Lexer lexer("<=<>>=<>=", 0);
  while (lexer.peekKind() != TokenKind::End) {
    operators.push_back(lexer.take().op);
  }
  EXPECT_EQ(operators,
            (std::vector{Operator::LessOrEqual, Operator::NotEqual, Operator::GreaterOrEqual,
                         Operator::NotEqual, Operator::Equal}));
}

TEST(Lexer, TokensKnowTheirPositionAndTheSpaceBeforeThem) {
  Lexer lexer("A1  B1", 0);
  Token const first = lexer.take();
  EXPECT_EQ(first.position, 0U);
  EXPECT_FALSE(first.followsSpace);
  EXPECT_FALSE(lexer.isAdjacent(TokenKind::Identifier));
  Token const second = lexer.take();
  EXPECT_EQ(second.position, 4U);
  EXPECT_EQ(second.text, "B1");
  EXPECT_TRUE(second.followsSpace);
  EXPECT_EQ(second.end(), 6U);
}

TEST(Lexer, BeginsAtAnIndex) {
  Lexer lexer(" =A1", 2);
  EXPECT_EQ(lexer.peek().text, "A1");
  EXPECT_EQ(lexer.peekSecond().kind, TokenKind::End);
}

TEST(Lexer, RefusesATextThatBeginsNoToken) {
  for (char const* text : {"~", "\"open", "'open", "[open", "#NOPE!"}) {
    EXPECT_THROW(readAll(text), FormulaParseError) << text;
  }
}

}  // namespace

}  // namespace Zorv::Formulas
