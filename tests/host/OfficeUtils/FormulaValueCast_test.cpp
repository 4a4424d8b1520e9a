#include "OfficeUtils/FormulaValueCast.h"

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FormulaModel/FormulaException.h"

namespace Zorv::OfficeUtils::FormulaValueCast {
namespace {

using FormulaModel::FormulaBoolean;
using FormulaModel::FormulaEmpty;
using FormulaModel::FormulaError;
using FormulaModel::FormulaErrorCode;
using FormulaModel::FormulaException;
using FormulaModel::FormulaNumber;
using FormulaModel::FormulaString;

LocaleContext const american("en-US");
LocaleContext const germanCasts("de-DE");

FormulaValue number(double value) { return FormulaNumber{FloatNumber(value)}; }

bool truth(FormulaValue const& value, LocaleContext const& locale = american) {
  return toBool(value, locale, CastMode::Condition, false);
}

std::string text(FormulaValue const& value, LocaleContext const& locale = american) {
  return toString(value, locale, nullptr);
}

TEST(ToBool, TheModeHasItsNumber) { EXPECT_EQ(static_cast<unsigned>(CastMode::Condition), 585U); }

TEST(ToBool, NumbersAreTrueWhenTheyAreNotZero) {
  EXPECT_TRUE(truth(number(1)));
  EXPECT_TRUE(truth(number(-0.001)));
  EXPECT_TRUE(truth(number(std::numeric_limits<double>::denorm_min())));
  EXPECT_FALSE(truth(number(0)));
  EXPECT_FALSE(truth(number(-0.0)));
}

TEST(ToBool, BooleansKeepTheirValueAndEmptyIsFalse) {
  EXPECT_TRUE(truth(FormulaBoolean{true}));
  EXPECT_FALSE(truth(FormulaBoolean{false}));
  EXPECT_FALSE(truth(FormulaEmpty()));
}

struct WordCase {
  char const* locale;
  char const* word;
  bool truth;
};

TEST(ToBool, TextsAreTheTruthValueThatTheyName) {
  for (WordCase const& row : std::vector<WordCase>{
           {"en-US", "TRUE", true},
           {"en-US", "false", false},
           {"en-US", "tRuE", true},
           {"de-DE", "wahr", true},
           {"de-DE", "Falsch", false},
           {"de-DE", "True", true},
           {"fr-FR", "vrai", true},
           {"fi-FI", "epätosi", false},
           {"fi-FI", "EPÄTOSI", false},
           {"tr-TR", "doğru", true},
           {"tr-TR", "yanlış", false},
           {"ru-RU", "Истина", true},
           {"ru-RU", "ложь", false},
           {"pl-PL", "fałsz", false},
       }) {
    EXPECT_EQ(truth(FormulaString{row.word}, LocaleContext(row.locale)), row.truth)
        << row.locale << ' ' << row.word;
  }
}

TEST(ToBool, OtherTextsAreRefused) {
  for (char const* other : {"", " TRUE", "TRUE ", "TRU", "1", "0", "yes", "WAHR", "\xFF"}) {
    EXPECT_THROW(truth(FormulaString{other}), FormulaException) << other;
  }
  EXPECT_THROW(truth(FormulaString{"VRAI"}, germanCasts), FormulaException);
}

TEST(ToBool, ErrorsAreRefused) {
  EXPECT_THROW(truth(FormulaError{FormulaErrorCode::NotAvailable}), FormulaException);
}

TEST(ToBool, StrictRefusesTextsAndNothingElse) {
  auto const strict = [](FormulaValue const& value) {
    return toBool(value, american, CastMode::Condition, true);
  };
  EXPECT_THROW(strict(FormulaString{"TRUE"}), FormulaException);
  EXPECT_TRUE(strict(number(2)));
  EXPECT_TRUE(strict(FormulaBoolean{true}));
  EXPECT_FALSE(strict(FormulaEmpty()));
}

struct NumberCase {
  double number;
  char const* text;
};

TEST(ToString, NumbersHaveTheirGeneralForm) {
  for (NumberCase const& row : std::vector<NumberCase>{
           {0.0, "0"},
           {-0.0, "0"},
           {5.0, "5"},
           {-42.0, "-42"},
           {12.5, "12.5"},
           {-0.25, "-0.25"},
           {0.1 + 0.2, "0.3"},
           {1.0 / 3.0, "0.333333333333333"},
           {2.0 / 3.0, "0.666666666666667"},
           {100.0 / 3.0, "33.3333333333333"},
           {1234567.891, "1234567.891"},
           {999999999999999.0, "999999999999999"},
           {1e15, "1000000000000000"},
           {1234567890123456789.0, "1234567890123460000"},
           {999999999999999.9, "1000000000000000"},
           {0.9999999999999999, "1"},
           {1e20, "100000000000000000000"},
           {1e21, "1E+21"},
           {1.5e21, "1.5E+21"},
           {-1.5e300, "-1.5E+300"},
           {1e-10, "0.0000000001"},
           {1.25e-7, "0.000000125"},
           {1e-11, "1E-11"},
           {-1.5e-100, "-1.5E-100"},
           {std::numeric_limits<double>::max(), "1.79769313486232E+308"},
           {5e-324, "4.94065645841247E-324"},
       }) {
    EXPECT_EQ(text(number(row.number)), row.text);
  }
}

TEST(ToString, NumbersHaveTheLocalesDecimalSeparator) {
  EXPECT_EQ(text(number(12.5), germanCasts), "12,5");
  EXPECT_EQ(text(number(-0.25), germanCasts), "-0,25");
  EXPECT_EQ(text(number(1.5e21), germanCasts), "1,5E+21");
  EXPECT_EQ(text(number(1234567), germanCasts), "1234567");
}

TEST(ToString, ANumberThatIsNotFiniteReadsAsANumberError) {
  EXPECT_EQ(text(number(std::numeric_limits<double>::quiet_NaN())), "#NUM!");
  EXPECT_EQ(text(number(-std::numeric_limits<double>::infinity())), "#NUM!");
}

TEST(ToString, OtherValuesHaveTheirText) {
  EXPECT_EQ(text(FormulaEmpty()), "");
  EXPECT_EQ(text(FormulaString{"Grün "}), "Grün ");
  EXPECT_EQ(text(FormulaBoolean{true}), "TRUE");
  EXPECT_EQ(text(FormulaBoolean{false}), "FALSE");
  EXPECT_EQ(text(FormulaError{FormulaErrorCode::DivisionByZero}), "#DIV/0!");
}

TEST(ToString, AFormatterWritesNumbersAndNothingElse) {
  class Brackets final : public GeneralNumberFormatter {
  public:
    [[nodiscard]] std::string format(FloatNumber number,
                                     LocaleContext const& locale) const override {
      return "[" + std::to_string(static_cast<int>(number.get())) + " " + locale.getName() + "]";
    }
  };
  Brackets const formatter;
  EXPECT_EQ(toString(number(7), germanCasts, &formatter), "[7 de-DE]");
  EXPECT_EQ(toString(FormulaString{"7"}, germanCasts, &formatter), "7");
}

}  // namespace
}  // namespace Zorv::OfficeUtils::FormulaValueCast
