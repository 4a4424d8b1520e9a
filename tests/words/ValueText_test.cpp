#include "words/ValueText.h"

#include <gtest/gtest.h>

#include "support/Values.h"

namespace Zorv::Words {
namespace {

using TestSupport::number;

class ValueTextTest : public testing::Test {
protected:
  std::string describe(FormulaValue const& value, NumberMeaning meaning = NumberMeaning::Number) {
    return describeValue(value, meaning, _locale);
  }

  OfficeUtils::LocaleContext _locale{"en-US"};
};

TEST_F(ValueTextTest, EachKindIsToldApart) {
  EXPECT_EQ(describe(number(4200.5)), "4200.5");
  EXPECT_EQ(describe(TestSupport::text("4200.5")), "\"4200.5\"");
  EXPECT_EQ(describe(TestSupport::text("")), "\"\"");
  EXPECT_EQ(describe(TestSupport::boolean(true)), "TRUE");
  EXPECT_EQ(describe(TestSupport::error(FormulaModel::FormulaErrorCode::DivisionByZero)),
            "#DIV/0!");
  EXPECT_EQ(describe(TestSupport::empty()), "empty");
}

TEST_F(ValueTextTest, DatesAreYearFirst) {
  EXPECT_EQ(describe(number(46316), NumberMeaning::Date), "2026-10-21");
  EXPECT_EQ(describe(number(46316.5), NumberMeaning::Date), "2026-10-21 12:00");
  EXPECT_EQ(describe(number(46316.999999), NumberMeaning::Date), "2026-10-22");
  EXPECT_EQ(describe(number(46316 + 61.0 / 86400), NumberMeaning::Date), "2026-10-21 00:01:01");
  EXPECT_EQ(describe(number(-1), NumberMeaning::Date), "-1") << "it is no date";
}

TEST_F(ValueTextTest, TextsAreMadePrintableAndShort) {
  EXPECT_EQ(describe(TestSupport::text("a\x1B[2J")), "\"a [2J\"");
  EXPECT_LE(describe(TestSupport::text(std::string(500, 'x'))).size(), 42U);
}

}  // namespace
}  // namespace Zorv::Words
