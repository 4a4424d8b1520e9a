#include "words/CellText.h"

#include <memory>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "OfficeUtils/FormulaValueCast.h"

namespace Zorv::Words {
namespace {

OfficeUtils::LocaleContext const& english() {
  static OfficeUtils::LocaleContext const locale;
  return locale;
}

/// A value in a cell with a number format.
std::string shown(FormulaValue const& value, std::string const& code,
                  OfficeUtils::LocaleContext const& locale = english()) {
  DOM::SharedObjectFactory const factory;
  DOM::CellStyle style;
  style.setCellFormat(std::make_shared<DOM::CellFormat const>(DOM::CellFormat{code}));
  DOM::Cell cell;
  cell.value = value;
  cell.style = factory.create(style);
  return std::string(CellFormatter(locale).toText(cell, nullptr));
}

std::string shown(double number, std::string const& code,
                  OfficeUtils::LocaleContext const& locale = english()) {
  return shown(FormulaModel::FormulaNumber{FloatNumber(number)}, code, locale);
}

/// A value in a cell without a style.
std::string shown(FormulaValue const& value) {
  DOM::Cell cell;
  cell.value = value;
  return std::string(CellFormatter(english()).toText(cell, nullptr));
}

TEST(CellText, NumbersAreInTheirFormat) {
  EXPECT_EQ(shown(183.128, "0.00"), "183.13");
  EXPECT_EQ(shown(0.5, "0%"), "50%");
  EXPECT_EQ(shown(-1234.5, "#,##0.00;[Red](#,##0.00)"), "(1,234.50)");
  EXPECT_EQ(shown(46347, "0.00"), "46347.00");
  EXPECT_EQ(shown(0.0, ";;;"), "");
}

TEST(CellText, YearFirstDatesStandAlone) {
  EXPECT_EQ(shown(46347, "yyyy-mm-dd"), "2026-11-21");
  EXPECT_EQ(shown(46347, "yyyy/m/d"), "2026/11/21");
  EXPECT_EQ(shown(46347.5625, "yyyy-mm-dd hh:mm"), "2026-11-21 13:30");
}

TEST(CellText, OtherDatesAreFollowedByTheYearFirstDate) {
  EXPECT_EQ(shown(46347, "d.m.yyyy"), "21.11.2026 (2026-11-21)");
  EXPECT_EQ(shown(46347, "m/d/yy"), "11/21/26 (2026-11-21)");
  EXPECT_EQ(shown(46347, "mmm yy"), "Nov 26 (2026-11-21)");
  EXPECT_EQ(shown(46347, "yyyy-dd-mm"), "2026-21-11 (2026-11-21)");
  EXPECT_EQ(shown(46347, "yy-mm-dd"), "26-11-21 (2026-11-21)");
  EXPECT_EQ(shown(46347.5625, "d.m.yyyy h:mm"), "21.11.2026 13:30 (2026-11-21)");
  OfficeUtils::LocaleContext const since1904("en-US", OfficeUtils::DateSystem::Since1904);
  EXPECT_EQ(shown(0, "yyyy", since1904), "1904 (1904-01-01)");
}

TEST(CellText, TimesAndDurationsHaveNoDate) {
  EXPECT_EQ(shown(0.5625, "h:mm"), "13:30");
  EXPECT_EQ(shown(1.5, "[h]:mm"), "36:00");
}

TEST(CellText, NumbersThatAFormatCannotShowAreInGeneralFormat) {
  EXPECT_EQ(shown(-1, "yyyy-mm-dd"), "-1");
  EXPECT_EQ(shown(1e10, "yyyy-mm-dd"), "10000000000");
  EXPECT_EQ(shown(1.5, "\"no format"), "1.5");
}

TEST(CellText, FollowsTheLocale) {
  OfficeUtils::LocaleContext const german("de-DE");
  EXPECT_EQ(shown(1.5, "General", german), "1,5");
  EXPECT_EQ(shown(1.5, "0.00", german), "1,50");
}

TEST(CellText, WholeNumbersAreInGeneralFormat) {
  for (auto const& [number, text] : {std::pair{0.0, "0"},
                                     {-0.0, "0"},
                                     {-12.0, "-12"},
                                     {99999999999.0, "99999999999"},
                                     {1e11, "100000000000"},
                                     {1e300, "1E+300"}}) {
    FormulaValue const value = FormulaModel::FormulaNumber{FloatNumber(number)};
    EXPECT_EQ(shown(value), text);
    EXPECT_EQ(shown(value), OfficeUtils::FormulaValueCast::toString(value, english(), nullptr));
  }
}

TEST(CellText, TextsMayHaveAFormat) {
  EXPECT_EQ(shown(FormulaModel::FormulaString{"abc"}, "0;0;0;\"<\"@\">\""), "<abc>");
  EXPECT_EQ(shown(FormulaModel::FormulaString{"abc"}, "0.00"), "abc");
}

TEST(CellText, TheConditionalFormatComesFirst) {
  DOM::Cell cell;
  cell.value = FormulaModel::FormulaNumber{FloatNumber(0.5)};
  DOM::CellFormat const percent{"0%"};
  EXPECT_EQ(CellFormatter(english()).toText(cell, &percent), "50%");
}

TEST(CellText, CellsWithoutAStyleAndOtherKindsOfValue) {
  EXPECT_EQ(shown(FormulaModel::FormulaNumber{FloatNumber(46347)}), "46347");
  EXPECT_EQ(shown(FormulaModel::FormulaString{"text"}), "text");
  EXPECT_EQ(shown(FormulaModel::FormulaError{FormulaModel::FormulaErrorCode::DivisionByZero}),
            "#DIV/0!");
  EXPECT_EQ(shown(FormulaValue()), "");
}

}  // namespace
}  // namespace Zorv::Words
