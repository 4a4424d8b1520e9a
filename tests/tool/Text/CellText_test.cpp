#include "tool/Text/CellText.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

/// A number in a cell with a number format.
std::string shown(double number, std::string const& code,
                  OfficeUtils::LocaleContext const& locale = {}) {
  DOM::SharedObjectFactory const factory;
  DOM::CellStyle style;
  style.setCellFormat(std::make_shared<DOM::CellFormat const>(DOM::CellFormat{code}));
  DOM::Cell cell;
  cell.value = FormulaModel::FormulaNumber{FloatNumber(number)};
  cell.style = factory.create(style);
  return toText(cell, locale);
}

/// A value in a cell without a style.
std::string shown(FormulaValue const& value) {
  DOM::Cell cell;
  cell.value = value;
  return toText(cell, OfficeUtils::LocaleContext());
}

TEST(CellText, FormatsWithPartsOfADateShowDates) {
  for (auto const* code :
       {"yyyy-mm-dd", "D.M.YY", "mmm yy", "[$-407]d. mmmm", "h:mm", "[Red]m/d"}) {
    EXPECT_TRUE(showsDates(code)) << code;
  }
}

TEST(CellText, QuotedAndBracketedPartsAreNoDates) {
  for (auto const* code : {"0.00", "General", "0 \"days\"", "[Red]0", "0_d", "\\d0",
                           "0;[Red]-0;\"d\"", "\"unclosed d", "[unclosed d", "#,##0.0%", "@", ""}) {
    EXPECT_FALSE(showsDates(code)) << code;
  }
}

TEST(CellText, DatesAreWrittenYearFirst) {
  EXPECT_EQ(shown(46347, "d.m.yyyy"), "2026-11-21");
  EXPECT_EQ(shown(46347.5625, "d.m.yyyy h:mm"), "2026-11-21 13:30:00");
  OfficeUtils::LocaleContext const since1904("en-US", OfficeUtils::DateSystem::Since1904);
  EXPECT_EQ(shown(0, "yyyy", since1904), "1904-01-01");
}

TEST(CellText, NumbersThatAreNoDatesStayNumbers) {
  EXPECT_EQ(shown(-1, "yyyy-mm-dd"), "-1");
  EXPECT_EQ(shown(1e10, "yyyy-mm-dd"), "10000000000");
  EXPECT_EQ(shown(46347, "0.00"), "46347");
}

TEST(CellText, FollowsTheLocale) {
  EXPECT_EQ(shown(1.5, "General", OfficeUtils::LocaleContext("de-DE")), "1,5");
}

TEST(CellText, CellsWithoutAStyleAndOtherKindsOfValue) {
  EXPECT_EQ(shown(FormulaModel::FormulaNumber{FloatNumber(46347)}), "46347");
  EXPECT_EQ(shown(FormulaModel::FormulaString{"text"}), "text");
  EXPECT_EQ(shown(FormulaModel::FormulaError{FormulaModel::FormulaErrorCode::DivisionByZero}),
            "#DIV/0!");
  EXPECT_EQ(shown(FormulaValue()), "");
}

}  // namespace
}  // namespace Zorv::Tool
