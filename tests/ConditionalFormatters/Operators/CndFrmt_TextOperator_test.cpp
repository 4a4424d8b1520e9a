#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"

#include <array>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <boost/variant/get.hpp>

#include "ConditionalFormatters/Operators/FormulaOperatorTest.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaException.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using Record = DOM::TextConditionalFormatOperator;
using Type = DOM::TextConditionalFormatType;

class TextOperatorTest : public FormulaOperatorTest {
protected:
  static Record makeLiteral(int type, std::string pattern) {
    return {static_cast<Type>(type), Record::Argument(std::move(pattern))};
  }
  static Record makeFormula(int type) {
    return {static_cast<Type>(type), Record::Argument(std::make_unique<Expr>())};
  }

  bool holds(Record const& record, FormulaValue const& cellValue) {
    return TextOperator(record, table, contextProvider, baseCell)(cell(cellValue));
  }
  bool holdsForLiteral(int type, FormulaValue const& cellValue, std::string pattern) {
    return holds(makeLiteral(type, std::move(pattern)), cellValue);
  }
  bool holdsForFormula(int type, FormulaValue const& cellValue, Formulas::CalcResult pattern) {
    engine.answer(std::move(pattern));
    return holds(makeFormula(type), cellValue);
  }
};

struct Match {
  std::string cellText;
  std::string pattern;
  bool contains;
  bool begins;
  bool ends;
};

std::vector<Match> makeMatches() {
  return {
      {"Hello", "ell", true, false, false},
      {"Hello", "hello", false, false, false},
      {"Hello", "Hello", true, true, true},
      {"Hello", "Hel", true, true, false},
      {"Hello", "lo", true, false, true},
      {"Hello", "H", true, true, false},
      {"Hello", "o", true, false, true},
      {"Hello", "Hallo", false, false, false},
      {"Hello", "Hello!", false, false, false},
      {"Hello", "Oh Hello", false, false, false},
      {"Hello", " Hello", false, false, false},
      {"Hello", "Hello ", false, false, false},
      {"Hello", "", true, true, true},
      {"", "", true, true, true},
      {"", "a", false, false, false},
      {"abab", "ab", true, true, true},
      {"aab", "ab", true, false, true},
      {"a*b", "a?b", false, false, false},
      {"axb", "a*b", false, false, false},
      {"\xC3\xA4", "\xA4", true, false, true},
      {"\xC3\xA4", "\xC3\x84", false, false, false},
      {std::string("a\0b", 3), std::string("\0b", 2), true, false, true},
      {std::string("a\0b", 3), std::string("a\0c", 3), false, false, false},
  };
}

TEST_F(TextOperatorTest, MatchesBytes) {
  for (auto const& match : makeMatches()) {
    std::array const expected = {match.contains, !match.contains, match.begins, match.ends};
    for (int type = 0; type < 4; ++type) {
      EXPECT_EQ(holdsForLiteral(type, text(match.cellText), match.pattern),
                expected.at(static_cast<std::size_t>(type)))
          << type << ": literal " << match.pattern << " in " << match.cellText;
      EXPECT_EQ(holdsForFormula(type, text(match.cellText), text(match.pattern)),
                expected.at(static_cast<std::size_t>(type)))
          << type << ": result " << match.pattern << " in " << match.cellText;
    }
  }
}

TEST_F(TextOperatorTest, ValuesOfOtherKindsAreSearchedInTheirText) {
  struct Row {
    FormulaValue cellValue;
    char const* cellText;
  };
  std::vector<Row> const rows = {
      {empty(), ""},
      {number(12.5), "12.5"},
      {boolean(true), "TRUE"},
      {boolean(false), "FALSE"},
      {error(FormulaModel::FormulaErrorCode::DivisionByZero), "#DIV/0!"},
  };
  for (auto const& row : rows) {
    std::string const cellText = row.cellText;
    EXPECT_TRUE(holdsForLiteral(0, row.cellValue, cellText)) << cellText;
    EXPECT_TRUE(holdsForLiteral(2, row.cellValue, cellText)) << cellText;
    EXPECT_TRUE(holdsForLiteral(3, row.cellValue, cellText)) << cellText;
    EXPECT_FALSE(holdsForLiteral(0, row.cellValue, cellText + "x")) << cellText;
    EXPECT_TRUE(holdsForLiteral(1, row.cellValue, "x")) << cellText;
    EXPECT_FALSE(holdsForLiteral(1, row.cellValue, "")) << cellText;
  }
  EXPECT_TRUE(holdsForLiteral(0, number(12.5), "2.5"));
}

TEST_F(TextOperatorTest, AFormulasValueOfAnotherKindIsThePatternThatItsTextIs) {
  EXPECT_TRUE(holdsForFormula(0, text("12.5 kg"), number(2.5)));
  EXPECT_TRUE(holdsForFormula(2, text("TRUEST"), boolean(true)));
  EXPECT_TRUE(holdsForFormula(3, text("the error #N/A"),
                              error(FormulaModel::FormulaErrorCode::NotAvailable)));
  EXPECT_TRUE(holdsForFormula(0, text("anything"), empty()));
  EXPECT_FALSE(holdsForFormula(1, text("anything"), empty()));
}

TEST_F(TextOperatorTest, AFormulaWithoutAValueMakesEveryKindFalse) {
  for (int type = 0; type < 4; ++type) {
    for (auto const& none : {makeReferenceResult(), makeReferenceListResult()}) {
      journal.clear();
      EXPECT_FALSE(holdsForFormula(type, text("Hello"), none)) << type;
      // Nothing is cast to text any more.
      EXPECT_EQ(journal.count("getLocaleContext"), 0);
    }
  }
}

TEST_F(TextOperatorTest, AsksNothingOfTheHostWhenItIsMade) {
  Record const literal = makeLiteral(0, "a");
  Record const formula = makeFormula(0);
  TextOperator const literalCondition(literal, table, contextProvider, baseCell);
  TextOperator const formulaCondition(formula, table, contextProvider, baseCell);
  EXPECT_THAT(journal.getEntries(), ElementsAre());
}

TEST_F(TextOperatorTest, ALiteralIsUsedWithoutAnEvaluation) {
  Record const record = makeLiteral(0, "=A1");
  TextOperator const condition(record, table, contextProvider, baseCell);
  EXPECT_TRUE(condition(cell(text("x=A1"))));
  EXPECT_THAT(journal.getEntries(), ElementsAre("getLocaleContext"));
}

TEST_F(TextOperatorTest, AFormulaIsEvaluatedAndThenEachCastAsksForTheLocale) {
  Record const record = makeFormula(0);
  TextOperator const condition(record, table, contextProvider, baseCell);
  for (int call = 0; call < 2; ++call) {
    journal.clear();
    static_cast<void>(condition(cell(text("Hello"))));
    EXPECT_THAT(journal.getEntries(), ElementsAre("getTableContext", "calcExpr(4,2)",
                                                  "getLocaleContext", "getLocaleContext"));
    auto const* const formula = boost::get<std::unique_ptr<Expr>>(record.getArgument()).get();
    EXPECT_EQ(engine.getCalcCalls().back().expr, formula);
  }
}

TEST_F(TextOperatorTest, ThePatternIsCastBeforeTheCell) {
  int asked = 0;
  contextProvider.onGetLocaleContext([&] {
    contextProvider.setLocaleContext(OfficeUtils::LocaleContext(++asked == 1 ? "de-DE" : "en-US"));
  });
  EXPECT_TRUE(holdsForFormula(0, text("2,5"), number(2.5)));
  asked = 0;
  EXPECT_FALSE(holdsForFormula(0, text("2.5"), number(2.5)));
  asked = 0;
  EXPECT_TRUE(holdsForFormula(0, number(2.5), text("2.5")));
  asked = 0;
  EXPECT_FALSE(holdsForFormula(0, number(2.5), text("2,5")));
}

TEST_F(TextOperatorTest, TheFormulaFollowsTheCell) {
  Record const record = makeFormula(0);
  TextOperator const condition(record, table, contextProvider, baseCell);
  engine.answerBy([](CalcCall const& call) { return number(static_cast<double>(call.column)); });
  EXPECT_TRUE(condition(cell(text("column 8"), at(3, 8))));
  ASSERT_EQ(engine.getShiftCalls().size(), 1);
  EXPECT_EQ(engine.getShiftCalls().front().columnOffset, 6);
  EXPECT_EQ(engine.getShiftCalls().front().rowOffset, -1);
}

TEST_F(TextOperatorTest, AnUnknownKindNeverHolds) {
  for (int const type : {4, 255}) {
    EXPECT_FALSE(holdsForLiteral(type, text("Hello"), "Hello")) << type;
    EXPECT_FALSE(holdsForLiteral(type, text("Hello"), "x")) << type;
    EXPECT_FALSE(holdsForFormula(type, text("Hello"), text("Hello"))) << type;
    EXPECT_FALSE(holdsForFormula(type, text("Hello"), makeReferenceResult())) << type;
  }
}

TEST_F(TextOperatorTest, WhatTheEvaluationThrowsReachesTheCaller) {
  engine.answerBy([](CalcCall const&) -> Formulas::CalcResult {
    throw FormulaModel::FormulaException("no way");
  });
  for (int type = 0; type < 4; ++type) {
    Record const record = makeFormula(type);
    std::unique_ptr<Operator> const condition =
        std::make_unique<TextOperator>(record, table, contextProvider, baseCell);
    EXPECT_THROW(static_cast<void>((*condition)(cell(text("a")))), FormulaModel::FormulaException);
  }
}

TEST_F(TextOperatorTest, PositionsOfTwoToThe31AndMoreThrow) {
  Record const record = makeFormula(0);
  TextOperator const condition(record, table, contextProvider, baseCell);
  EXPECT_THROW(static_cast<void>(condition(cell(text("a"), at(2147483648, 0)))), BadNumCastError);
  EXPECT_THROW(static_cast<void>(condition(cell(text("a"), at(0, 2147483648)))), BadNumCastError);
}

using TextOperatorDeathTest = TextOperatorTest;

TEST_F(TextOperatorDeathTest, ANullFormulaStopsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  Record const record(Type::NotContains, Record::Argument(std::unique_ptr<Expr>()));
  TextOperator const condition(record, table, contextProvider, baseCell);
  EXPECT_DEATH(static_cast<void>(condition(cell(text("a")))),
               "^/code/Utils/Public/Ptr/PtrUtils:254: assertion failed: \"plainPtr\"\n");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
