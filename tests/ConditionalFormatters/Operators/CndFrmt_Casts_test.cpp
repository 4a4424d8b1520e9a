#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

#include "ConditionalFormatters/Operators/CndFrmt_TextOperator.h"
#include "ConditionalFormatters/Operators/CndFrmt_UnaryOperator.h"
#include "ConditionalFormatters/Operators/FormulaOperatorTest.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaException.h"
#include "Utils/Exceptions.h"
#include "support/RecordingServices.h"

// Which values conditions cast, in which order and how, and that they believe what the casts say.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;

using UnaryRecord = DOM::UnaryConditionalFormatOperator;
using UnaryType = DOM::UnaryConditionalFormatType;
using TextRecord = DOM::TextConditionalFormatOperator;
using TextType = DOM::TextConditionalFormatType;

class TruthCastTest : public FormulaOperatorTest {
protected:
  /// True if the formula is true, when this is its result.
  bool isTrue(Formulas::CalcResult result) {
    engine.answer(std::move(result));
    journal.clear();
    return (*condition)(cell(text("not looked at")));
  }

  RecordingServices services{journal};
  UnaryRecord const record{UnaryType::FormulaIsTrue, Expr()};
  std::unique_ptr<Operator> const condition =
      std::make_unique<UnaryOperator>(record, table, contextProvider, baseCell);
};

TEST_F(TruthCastTest, AFormulaIsTrueAsTheCastSays) {
  struct Case {
    FormulaValue value;
    char const* cast;
  };
  for (Case const& c :
       {Case{empty(), "toBool(empty,en-US,585,false)"},
        Case{number(0), "toBool(0.000000,en-US,585,false)"},
        Case{text("a"), "toBool(\"a\",en-US,585,false)"},
        Case{boolean(true), "toBool(TRUE,en-US,585,false)"},
        Case{error(FormulaModel::FormulaErrorCode::Name), "toBool(error 5,en-US,585,false)"}}) {
    for (bool const answer : {true, false}) {
      services.castToBoolBy([&](FormulaValue const&) { return answer; });
      EXPECT_EQ(isTrue(c.value), answer) << c.cast;
      EXPECT_THAT(journal.getEntries(), ElementsAre("getTableContext", "calcExpr(4,2)", c.cast));
    }
  }
}

TEST_F(TruthCastTest, AFormulaWithoutAValueIsCastAsFalse) {
  for (auto const& none : {makeReferenceResult(), makeReferenceListResult()}) {
    for (bool const answer : {true, false}) {
      services.castToBoolBy([&](FormulaValue const&) { return answer; });
      EXPECT_EQ(isTrue(none), answer);
      EXPECT_THAT(journal.getEntries(),
                  ElementsAre("getTableContext", "calcExpr(4,2)", "toBool(FALSE,en-US,585,false)"));
    }
  }
}

TEST_F(TruthCastTest, ACastThatThrowsAFormulaExceptionIsFalse) {
  services.castToBoolBy(
      [](FormulaValue const&) -> bool { throw FormulaModel::FormulaException("no truth value"); });
  EXPECT_FALSE(isTrue(boolean(true)));
  EXPECT_FALSE(isTrue(makeReferenceResult()));
}

TEST_F(TruthCastTest, WhateverElseACastThrowsReachesTheCaller) {
  services.castToBoolBy(
      [](FormulaValue const&) -> bool { throw BaseRuntimeError("no truth value"); });
  EXPECT_THROW((void)isTrue(boolean(true)), BaseRuntimeError);
  services.castToBoolBy([](FormulaValue const&) -> bool { throw std::bad_alloc(); });
  EXPECT_THROW((void)isTrue(makeReferenceResult()), std::bad_alloc);
}

TEST_F(TruthCastTest, TheLocaleIsThatOfTheConstruction) {
  contextProvider.setLocaleContext(OfficeUtils::LocaleContext("de-DE"));
  (void)isTrue(number(1));
  EXPECT_EQ(journal.getEntries().back(), "toBool(1.000000,en-US,585,false)");
}

TEST_F(TruthCastTest, ComparisonsCastNothing) {
  for (int type = 0; type < static_cast<int>(UnaryType::FormulaIsTrue); ++type) {
    UnaryRecord const comparison(static_cast<UnaryType>(type), Expr());
    UnaryOperator const compare(comparison, table, contextProvider, baseCell);
    journal.clear();
    (void)compare(cell(text("a")));
    EXPECT_THAT(journal.getEntries(), ElementsAre("getTableContext", "calcExpr(4,2)")) << type;
  }
}

class TextCastTest : public FormulaOperatorTest {
protected:
  TextCastTest() {
    // A cast of its own, so that a text that was not cast is told from one that was.
    services.castToStringBy([](FormulaValue const& value) {
      auto const* const string = boost::get<FormulaModel::FormulaString>(&value);
      return string == nullptr ? std::string("other") : "<" + string->value + ">";
    });
  }

  bool holds(TextRecord const& record, FormulaValue const& cellValue) {
    TextOperator const condition(record, table, contextProvider, baseCell);
    journal.clear();
    return condition(cell(cellValue));
  }
  bool holdsForLiteral(TextType type, FormulaValue const& cellValue, std::string literal) {
    return holds({type, TextRecord::Argument(std::move(literal))}, cellValue);
  }
  bool holdsForFormula(TextType type, FormulaValue const& cellValue, FormulaValue pattern) {
    engine.answer(std::move(pattern));
    return holds({type, TextRecord::Argument(std::make_unique<Expr>())}, cellValue);
  }

  RecordingServices services{journal};
};

TEST_F(TextCastTest, ALiteralIsLookedForInTheCastOfTheCell) {
  EXPECT_TRUE(holdsForLiteral(TextType::BeginsWith, text("a"), "<a"));
  EXPECT_THAT(journal.getEntries(), ElementsAre("getLocaleContext", "toString(\"a\",en-US,null)"));
  EXPECT_FALSE(holdsForLiteral(TextType::BeginsWith, text("a"), "a"));
  EXPECT_TRUE(holdsForLiteral(TextType::EndsWith, number(5), "her"));
  EXPECT_THAT(journal.getEntries(),
              ElementsAre("getLocaleContext", "toString(5.000000,en-US,null)"));
}

TEST_F(TextCastTest, AFormulasValueIsCastAndThenTheCell) {
  EXPECT_TRUE(holdsForFormula(TextType::Contains, text("a"), text("a")));
  EXPECT_THAT(journal.getEntries(),
              ElementsAre("getTableContext", "calcExpr(4,2)",                //
                          "getLocaleContext", "toString(\"a\",en-US,null)",  //
                          "getLocaleContext", "toString(\"a\",en-US,null)"));
  // "<a>" is not in "<ab>".
  EXPECT_FALSE(holdsForFormula(TextType::Contains, text("ab"), text("a")));
  EXPECT_THAT(journal.getEntries(),
              ElementsAre("getTableContext", "calcExpr(4,2)",                //
                          "getLocaleContext", "toString(\"a\",en-US,null)",  //
                          "getLocaleContext", "toString(\"ab\",en-US,null)"));
  EXPECT_TRUE(holdsForFormula(TextType::EndsWith, empty(), boolean(true)));
  EXPECT_THAT(journal.getEntries(), ElementsAre("getTableContext", "calcExpr(4,2)",               //
                                                "getLocaleContext", "toString(TRUE,en-US,null)",  //
                                                "getLocaleContext", "toString(empty,en-US,null)"));
}

TEST_F(TextCastTest, WhatTheCastsThrowReachesTheCaller) {
  services.castToStringBy([](FormulaValue const& value) -> std::string {
    throw std::out_of_range(boost::get<FormulaModel::FormulaString>(value).value);
  });
  EXPECT_THROW((void)holdsForLiteral(TextType::NotContains, text("cell"), "a"), std::out_of_range);
  try {
    (void)holdsForFormula(TextType::NotContains, text("cell"), text("pattern"));
    ADD_FAILURE() << "nothing was thrown";
  } catch (std::out_of_range const& e) {
    EXPECT_STREQ(e.what(), "pattern");
  }
  services.castToStringBy(
      [](FormulaValue const&) -> std::string { throw FormulaModel::FormulaException("no text"); });
  EXPECT_THROW((void)holdsForFormula(TextType::Contains, text("cell"), text("a")),
               FormulaModel::FormulaException);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
