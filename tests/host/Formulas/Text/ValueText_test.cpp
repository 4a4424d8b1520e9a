#include "Formulas/Text/ValueText.h"

#include <optional>
#include <string_view>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

struct ValueTextCase {
  std::string_view text;
  double number;
};

OfficeUtils::LocaleContext const englishValues("en-US");

TEST(ValueText, NumbersMoneyAndMomentsAreNumbers) {
  for (ValueTextCase const& c :
       {ValueTextCase{"12.5", 12.5}, ValueTextCase{"50%", 0.5}, ValueTextCase{"$1,000.50", 1000.5},
        ValueTextCase{"5 €", 5}, ValueTextCase{"-£5", -5}, ValueTextCase{"$-5", -5},
        ValueTextCase{"(5)", -5}, ValueTextCase{"($5)", -5}, ValueTextCase{"( 5 )", -5},
        ValueTextCase{"2024-01-30", 45321}, ValueTextCase{"6 pm", 0.75},
        ValueTextCase{"Jan 2024", 45292}}) {
    EXPECT_EQ(readValue(c.text, englishValues), c.number) << c.text;
  }
}

TEST(ValueText, AmountsHaveOneSign) {
  for (std::string_view const text : {"(-5)", "-$-5", "($-5)", "$$5", "()", "$", "(5", "5)"}) {
    EXPECT_EQ(readValue(text, englishValues), std::nullopt) << text;
  }
}

TEST(ValueText, ADateWithoutAYearNeedsTheCurrentOne) {
  EXPECT_EQ(readValue("Jan 30", englishValues), std::nullopt);
  EXPECT_EQ(readValue("Jan 30", englishValues, 2024), 45321);
}

TEST(ValueText, OtherTextsAreNone) {
  for (std::string_view const text : {"", " ", "five", "TRUE", "1 2"}) {
    EXPECT_EQ(readValue(text, englishValues), std::nullopt) << text;
  }
}

}  // namespace

}  // namespace Zorv::Formulas
