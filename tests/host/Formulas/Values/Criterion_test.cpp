#include "Formulas/Values/Criterion.h"

#include <ostream>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

Value text(std::string_view characters) { return Value::text(characters); }
Value number(double value) { return Value::number(value); }

struct CriterionCase {
  Value criterion;
  Value value;
  bool matches;
};

TEST(Criterion, JudgesValues) {
  Value const empty;
  Value const yes = Value::boolean(true);
  Value const error = Value::error(FormulaErrorCode::NotAvailable);
  CriterionCase const cases[] = {
      {number(5), number(5), true},
      {number(5), number(6), false},
      {number(5), text("5"), true},
      {number(5), text("5.0"), true},
      {number(5), text("x"), false},
      {number(0), empty, false},
      {empty, number(0), true},
      {empty, empty, false},
      {yes, yes, true},
      {yes, number(1), false},
      {error, error, true},
      {error, Value::error(FormulaErrorCode::Name), false},
      {text("abc"), text("ABC"), true},
      {text("abc"), text("abcd"), false},
      {text("=abc"), text("abc"), true},
      {text("<>abc"), text("ABC"), false},
      {text("<>abc"), number(1), true},
      {text("<>abc"), empty, true},
      {text("<>abc"), error, true},
      {text("a*"), text("Apple"), true},
      {text("<>a*"), text("Apple"), false},
      {text("a~*"), text("a*"), true},
      {text("a~*"), text("ab"), false},
      {text("*"), number(5), false},
      {text("*"), text(""), true},
      {text(">5"), number(6), true},
      {text(">5"), number(5), false},
      {text(">=5"), number(5), true},
      {text("<5"), number(4), true},
      {text("<=5"), number(5.1), false},
      {text(">5"), text("6"), false},
      {text(">5"), yes, false},
      {text("<5"), empty, false},
      {text("=5"), number(5), true},
      {text("<>5"), text("5"), false},
      {text(">b"), text("C"), true},
      {text(">b"), text("a"), false},
      {text(">b"), number(9), false},
      {text("<=b"), text("B"), true},
      {text(">FALSE"), yes, true},
      {text("true"), yes, true},
      {text("#n/a"), error, true},
      {text(""), empty, true},
      {text(""), text(""), true},
      {text(""), text("a"), false},
      {text("="), empty, true},
      {text("="), text(""), false},
      {text("<>"), empty, false},
      {text("<>"), text(""), true},
      {text("<>"), number(0), true},
      {text("50%"), number(0.5), true},
  };
  OfficeUtils::LocaleContext const locale;
  StepMeter steps;
  int place = 0;
  for (CriterionCase const& test : cases) {
    EXPECT_EQ(Criterion(test.criterion, locale).matches(test.value, steps), test.matches)
        << "case " << place;
    ++place;
  }
}

TEST(Criterion, TellsWhetherPlacesWithoutCellsFulfilIt) {
  OfficeUtils::LocaleContext const locale;
  EXPECT_TRUE(Criterion(text(""), locale).matchesEmpty());
  EXPECT_TRUE(Criterion(text("="), locale).matchesEmpty());
  EXPECT_TRUE(Criterion(text("<>x"), locale).matchesEmpty());
  EXPECT_FALSE(Criterion(text("<>"), locale).matchesEmpty());
  EXPECT_FALSE(Criterion(number(0), locale).matchesEmpty());
  EXPECT_FALSE(Criterion(text("<5"), locale).matchesEmpty());
}

}  // namespace

}  // namespace Zorv::Formulas
