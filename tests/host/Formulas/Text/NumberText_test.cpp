#include "Formulas/Text/NumberText.h"

#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

struct NumberTextCase {
  std::string_view text;
  std::optional<double> number;
};

OfficeUtils::LocaleContext const englishNumbers("en-US");
OfficeUtils::LocaleContext const germanNumbers("de-DE");

TEST(NumberText, NumbersAreReadAsPeopleTypeThem) {
  for (NumberTextCase const& c :
       {NumberTextCase{"12", 12.0}, NumberTextCase{" -1.5 ", -1.5}, NumberTextCase{"+.5", 0.5},
        NumberTextCase{"5.", 5.0}, NumberTextCase{"1,234,567.5", 1234567.5},
        NumberTextCase{"1e3", 1000.0}, NumberTextCase{"2.5E-1", 0.25},
        NumberTextCase{"1E+2", 100.0}, NumberTextCase{"12.5%", 0.125},
        NumberTextCase{"50 %", 0.5}}) {
    EXPECT_EQ(readNumber(c.text, englishNumbers), c.number) << c.text;
  }
}

TEST(NumberText, SeparatorsAreThoseOfTheLocale) {
  EXPECT_EQ(readNumber("1.234,5", germanNumbers), 1234.5);
  EXPECT_EQ(readNumber("1,234.5", germanNumbers), std::nullopt);
}

TEST(NumberText, OtherTextsAreNone) {
  for (std::string_view const text :
       {"",       " ",    "-",       ".",   "%",    "e5",  "1e",  "1e+", "1.2.3", "12,34",
        "1,2345", ",123", "1.5,000", "--1", "0x1F", "inf", "nan", "1 2", "12a",   "1e999"}) {
    EXPECT_EQ(readNumber(text, englishNumbers), std::nullopt) << text;
  }
}

TEST(NumberText, HasAsManyFiguresAsPeopleWrite) {
  EXPECT_EQ(readNumber(std::string(100, '0') + "7", englishNumbers), 7.0);
  EXPECT_EQ(readNumber(std::string(200, '0') + "7", englishNumbers), std::nullopt);
}

}  // namespace

}  // namespace Zorv::Formulas
