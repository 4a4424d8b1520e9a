#include "OfficeUtils/NumberFormat.h"

#include <cstddef>
#include <initializer_list>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

namespace Zorv::OfficeUtils {
namespace {

struct FormatCase {
  std::string_view code;
  double number;
  std::string_view result;
};

/// Stands for a number that the format cannot show.
constexpr std::string_view notShown = "(not shown)";

void expectFormats(std::initializer_list<FormatCase> const& cases,
                   LocaleContext const& locale = LocaleContext()) {
  for (FormatCase const& test : cases) {
    auto const format = NumberFormat::compile(test.code);
    ASSERT_TRUE(format) << test.code;
    EXPECT_EQ(format->formatNumber(test.number, locale).value_or(std::string(notShown)),
              test.result)
        << test.code << " of " << test.number;
  }
}

TEST(NumberFormat, FillsPlacesOfDigits) {
  expectFormats({
      {"0", 1234.5, "1235"},
      {"0", 0.4, "0"},
      {"0.00", 1234.567, "1234.57"},
      {"0.00", 1.005, "1.01"},
      {"0.00", 0.0, "0.00"},
      {"000", 7.0, "007"},
      {"#", 0.0, ""},
      {"#.##", 0.5, ".5"},
      {"#.##", 5.0, "5."},
      {"0.0#", 2.5, "2.5"},
      {"0.0#", 2.0, "2.0"},
      {"?0.0?", 2.5, " 2.5 "},
      {".00", 12.5, "12.50"},
      {".00", 0.5, ".50"},
      {"0", 9.99, "10"},
      {"0.0", 99.96, "100.0"},
      {"0", 1e20, "100000000000000000000"},
      {"0.0000000000", 1e-12, "0.0000000000"},
      {"0.00", 0.1 + 0.2, "0.30"},
  });
}

TEST(NumberFormat, GroupsAndScalesByCommas) {
  expectFormats({
      {"#,##0", 1234567.0, "1,234,567"},
      {"#,##0", 12.0, "12"},
      {"#,##0.00", 1234.5, "1,234.50"},
      {"0,000", 12.0, "0,012"},
      {"#,###", 0.0, ""},
      {"?,???", 12.0, "   12"},
      {"0,", 12345.0, "12"},
      {"0.0,,", 12345678.0, "12.3"},
      {"#,##0,", 12345678.0, "12,346"},
      {"#,", 400.0, ""},
  });
}

TEST(NumberFormat, ShowsPercentages) {
  expectFormats({
      {"0%", 0.285, "29%"},
      {"0.0%", 0.1234, "12.3%"},
      {"0%", -0.5, "-50%"},
      {"%0", 0.5, "%50"},
      {"0%%", 0.5, "5000%%"},
      {"0%", 0.0, "0%"},
  });
}

TEST(NumberFormat, ShowsExponents) {
  expectFormats({
      {"0.00E+00", 12200000.0, "1.22E+07"},
      {"0.00E-00", 12200000.0, "1.22E07"},
      {"0.00E+00", 0.00012, "1.20E-04"},
      {"0E+0", 0.0, "0E+0"},
      {"0.0e+0", 9.96, "1.0E+1"},
      {"##0.0E+0", 12345.0, "12.3E+3"},
      {"##0.0E+0", 999960.0, "1.0E+6"},
      {"##0.0E+0", 0.00012345, "123.5E-6"},
      {"0.00E+00", 1e300, "1.00E+300"},
      {"0.00E+00", -5.0, "-5.00E+00"},
  });
}

TEST(NumberFormat, ShowsFractions) {
  expectFormats({
      {"# ?/?", 0.5, " 1/2"},
      {"# ?/?", 5.25, "5 1/4"},
      {"# ?/?", 5.3, "5 2/7"},
      {"# ??"
       "/??",
       5.3, "5  3/10"},
      {"# ??"
       "/??",
       3.14159265, "3 14/99"},
      {"# ??"
       "/??",
       0.5, "  1/2 "},
      {"?/?", 3.5, "7/2"},
      {"# ?/8", 0.5, " 4/8"},
      {"# ??"
       "/16",
       2.25, "2  4/16"},
      {"# ?/100", 0.37, " 37/100"},
      {"# ?/?", 3.0, "3    "},
      {"# ?/?", 0.0, "0    "},
      {"# ?/?", 2.99, "3    "},
      {"0 0/0", 0.25, "0 1/4"},
      {"# ?/?\" in\"", 0.5, " 1/2 in"},
      {"# ?/?", -0.5, "- 1/2"},
      {"0/x", 5.0, "5/x"},
  });
}

TEST(NumberFormat, ShowsGeneralNumbers) {
  expectFormats({
      {"General", 1.0 / 3.0, "0.333333333"},
      {"general", 3.14159265358979, "3.141592654"},
      {"General", 12345678901.0, "12345678901"},
      {"General", 123456789012.0, "1.23457E+11"},
      {"General", 0.0001, "0.0001"},
      {"General", 0.0000125, "1.25E-05"},
      {"General", 1e100, "1E+100"},
      {"General", -2.5, "-2.5"},
      {"General", 0.0, "0"},
      {"General\" m\"", 2.5, "2.5 m"},
      {"@", 2.5, "2.5"},
  });
}

TEST(NumberFormat, KeepsLiterals) {
  expectFormats({
      {"\"Total: \"0", 5.0, "Total: 5"},
      {"$0.00", 5.0, "$5.00"},
      {"0\\x", 5.0, "5x"},
      {"(0)", 5.0, "(5)"},
      {"0_)", 5.0, "5 "},
      {"* 0", 5.0, "5"},
      {"000-00-0000", 123456789.0, "123-45-6789"},
      {"(000) 000-0000", 5551234567.0, "(555) 123-4567"},
      {"0.0\" of \"0", 1.25, "1.2 of 5"},
      {"0 €", 5.0, "5 €"},
      {"[$€-407] 0", 5.0, "€ 5"},
      {"[Red]0", 5.0, "5"},
      {"[Color 12]0", 5.0, "5"},
      {"\"only text\"", 5.0, "only text"},
      {"\"only text\"", -5.0, "-only text"},
      {"", 5.0, ""},
      {"", -5.0, ""},
  });
}

TEST(NumberFormat, ChoosesSections) {
  expectFormats({
      {"0", -5.0, "-5"},
      {"0.0", -0.01, "-0.0"},
      {"0;(0)", -5.0, "(5)"},
      {"0;(0)", 0.0, "0"},
      {"0;-0;\"zero\"", 0.0, "zero"},
      {"0;-0;\"zero\"", -3.0, "-3"},
      {"0;;", -3.0, ""},
      {";;;", 3.0, ""},
      {"0;0;0;@", -3.0, "3"},
      {"0;@", -3.0, "-3"},
      {"[>100]\"large\";0", 101.0, "large"},
      {"[>100]\"large\";0", 100.0, "100"},
      {"[>100]\"large\";0", -5.0, "-5"},
      {"[<1]\"few\";[<10]\"some\";\"many\"", 0.5, "few"},
      {"[<1]\"few\";[<10]\"some\";\"many\"", 5.0, "some"},
      {"[<1]\"few\";[<10]\"some\";\"many\"", 50.0, "many"},
      {"[=1]\"one\";[=2]\"two\";0", 2.0, "two"},
      {"[=1]\"one\";[=2]\"two\";0", 3.0, "3"},
      {"[<0]0;0", -5.0, "5"},
      {"[<=-2]0;0", -5.0, "5"},
      {"[<>5]\"other\";0", 5.0, "5"},
      {"[>=0]0;0", -5.0, "5"},
      {"[Red][<=100]0;[Blue][>100]0.0", 101.0, "101.0"},
      {"[>5]\"a\";[>3]\"b\"", 1.0, notShown},
      {"0", std::numeric_limits<double>::infinity(), notShown},
      {"0", std::numeric_limits<double>::quiet_NaN(), notShown},
  });
}

// Serial 45292 is Monday, 1 January 2024.
TEST(NumberFormat, ShowsDates) {
  expectFormats({
      {"yyyy-mm-dd", 45292.0, "2024-01-01"},
      {"d.m.yy", 45292.75, "1.1.24"},
      {"YYYY/MM/DD", 45292.0, "2024/01/01"},
      {"mmm d, yyyy", 45292.0, "Jan 1, 2024"},
      {"mmmm", 45292.0, "January"},
      {"mmmmm", 45292.0, "J"},
      {"ddd", 45292.0, "Mon"},
      {"dddd", 45292.0, "Monday"},
      {"aaa", 45292.0, "Mon"},
      {"e", 45292.0, "2024"},
      {"yyyy-mm-dd", 60.0, "1900-02-29"},
      {"yyyy-mm-dd", 0.0, "1900-01-00"},
      {"yyyy-mm-dd", 2958465.0, "9999-12-31"},
      {"yyyy-mm-dd", 2958466.0, notShown},
      {"yyyy-mm-dd", -1.0, notShown},
      {"yyyy-mm-dd", 45292.99999999, "2024-01-01"},
      {"yyyy\"-0-\"m", 45292.0, "2024-0-1"},
  });
}

TEST(NumberFormat, ShowsTimes) {
  expectFormats({
      {"hh:mm:ss", 0.75, "18:00:00"},
      {"h:mm", 0.5 + 5.0 / 1440.0, "12:05"},
      {"h:mm AM/PM", 0.75, "6:00 PM"},
      {"h:mm AM/PM", 0.0, "12:00 AM"},
      {"h:mm A/P", 0.25, "6:00 A"},
      {"h am/pm", 0.5, "12 PM"},
      {"mm:ss", 65.0 / 86400.0, "01:05"},
      {"mm:ss.0", 65.25 / 86400.0, "01:05.3"},
      {"ss.000", 5.0625 / 86400.0, "05.063"},
      {"s", 59.6 / 86400.0, "0"},
      {"[h]:mm", 1.5, "36:00"},
      {"[hh]:mm:ss", 0.25, "06:00:00"},
      {"[mm]:ss", 65.0 / 1440.0, "65:00"},
      {"[ss]", 1.0, "86400"},
      {"[h]:mm", -0.5, notShown},
      {"yyyy-mm-dd hh:mm", 45292.5, "2024-01-01 12:00"},
      {"m/d/yyyy h:mm:ss", 45292.0 + 86399.6 / 86400.0, "1/2/2024 0:00:00"},
      {"h \"m\" m", 0.5, "12 m 0"},
      {"h:mm", 2958465.999999, notShown},
  });
}

TEST(NumberFormat, FollowsTheLocale) {
  LocaleContext const german("de-DE");
  expectFormats({{"#,##0.00", 1234.5, "1.234,50"},
                 {"mmmm", 45352.0, "März"},
                 {"mmm", 45352.0, "Mär"},
                 {"dddd", 45292.0, "Montag"},
                 {"General", 2.5, "2,5"},
                 {"ss.0", 0.5 / 86400.0, "00,5"},
                 {"[$-409]dddd", 45292.0, "Monday"}},
                german);
  expectFormats({{"[$-407]mmmm", 45352.0, "März"},
                 {"[$-40C]dddd", 45292.0, "lundi"},
                 {"[$-F800]dddd", 45292.0, "Monday"}});
}

TEST(NumberFormat, CountsDaysOfTheDateSystem) {
  LocaleContext const since1904("en-US", DateSystem::Since1904);
  expectFormats({{"yyyy-mm-dd", 0.0, "1904-01-01"}, {"ddd", 0.0, "Fri"}}, since1904);
}

TEST(NumberFormat, ShowsTexts) {
  auto const format = [](std::string_view code, std::string_view text) {
    return NumberFormat::compile(code)->formatText(text);
  };
  EXPECT_EQ(format("0.00", "abc"), "abc");
  EXPECT_EQ(format("@", "abc"), "abc");
  EXPECT_EQ(format("\"<\"@\">\"", "abc"), "<abc>");
  EXPECT_EQ(format("0;0;0;@@", "abc"), "abcabc");
  EXPECT_EQ(format("0;0;0;\"text\"", "abc"), "text");
  EXPECT_EQ(format(";;;", "abc"), "");
  EXPECT_EQ(format("0;@\"!\"", "abc"), "abc!");
}

TEST(NumberFormat, SaysWhetherItShowsADate) {
  for (std::string_view const code :
       {"yyyy-mm-dd", "D.M.YY", "mmm yy", "[$-407]d. mmmm", "[Red]m/d", "0;yyyy", "h:mm d"}) {
    EXPECT_TRUE(NumberFormat::compile(code)->showsDate(code.front() == '0' ? -1 : 1)) << code;
  }
  for (std::string_view const code :
       {"0.00", "General", "0 \"days\"", "[Red]0", "0_d", "\\d0", "0;[Red]-0;\"d\"", "#,##0.0%",
        "@", "h:mm", "[h]:mm:ss", "0;yyyy"}) {
    EXPECT_FALSE(NumberFormat::compile(code)->showsDate(1)) << code;
  }
}

TEST(NumberFormat, RefusesTextsThatAreNoFormat) {
  for (std::string_view const code : {"\"open", "[Red", "0;0;0;@;0"}) {
    EXPECT_FALSE(NumberFormat::compile(code)) << code;
  }
}

ShownText show(std::string_view code, double number, unsigned generalCharacters = 11) {
  auto const format = NumberFormat::compile(code);
  EXPECT_TRUE(format) << code;
  return format->showNumber(number, LocaleContext(), generalCharacters)
      .value_or(ShownText{std::string(notShown)});
}

TEST(NumberFormat, ShownTextHasTheColourOfItsSection) {
  struct ColourCase {
    std::string_view code;
    double number;
    std::string_view text;
    unsigned colour;
  };
  for (ColourCase const& test : std::initializer_list<ColourCase>{
           {"0", 1, "1", 0},
           {"0;[Red]-0", 1, "1", 0},
           {"0;[Red]-0", -1, "-1", 3},
           {"[black]0", 1, "1", 1},
           {"[White]0", 1, "1", 2},
           {"[GREEN]0", 1, "1", 4},
           {"[Blue]0", 1, "1", 5},
           {"[Yellow]0", 1, "1", 6},
           {"[Magenta]0", 1, "1", 7},
           {"[Cyan]0", 1, "1", 8},
           {"[Color10]0", 1, "1", 10},
           {"[color 56]0", 1, "1", 56},
           {"[Color57]0", 1, "1", 0},
           {"[Reddish]0", 1, "1", 0},
           {"[Color0]0", 1, "1", 0},
           {"[Red][<10]0;[Blue][>20]0;0", 5, "5", 3},
           {"[Red][<10]0;[Blue][>20]0;0", 25, "25", 5},
           {"[Red][<10]0;[Blue][>20]0;0", 15, "15", 0},
           {"[Blue]yyyy", 366, "1900", 5},
           {"[Cyan]General", 1.5, "1.5", 8},
       }) {
    ShownText const shown = show(test.code, test.number);
    EXPECT_EQ(shown.text, test.text) << test.code;
    EXPECT_EQ(shown.colour, test.colour) << test.code;
  }
  ShownText const text = NumberFormat::compile("0;0;0;[Magenta]@")->showText("a");
  EXPECT_EQ(text.text, "a");
  EXPECT_EQ(text.colour, 7U);
}

TEST(NumberFormat, ShownTextTellsWhereItIsFilled) {
  struct FillCase {
    std::string_view code;
    double number;
    std::string_view text;
    std::optional<std::size_t> at;
    std::string_view fill;
  };
  for (FillCase const& test : std::initializer_list<FillCase>{
           {"0", 5, "5", std::nullopt, ""},
           {"* #,##0.00", 1234.5, "1,234.50", 0, " "},
           {R"(_("$"* #,##0.00_))", 5, " $5.00 ", 2, " "},
           {"0*-", -5, "-5", 2, "-"},
           {"0*\u2026", 5, "5", 1, "\u2026"},
           {"*a0*b", 5, "5", 1, "b"},
           {"hh* :mm", 0.5, "12:00", 2, " "},
           {"General* ", 5, "5", 1, " "},
           {"* 0.00E+00", 1500, "1.50E+03", 0, " "},
           {"* # ?/?", 1.5, "1 1/2", 0, " "},
           {"0*", 5, "5", std::nullopt, ""},
           {"*-", -5, "", 0, "-"},
       }) {
    ShownText const shown = show(test.code, test.number);
    EXPECT_EQ(shown.text, test.text) << test.code;
    EXPECT_EQ(shown.fillAt, test.at) << test.code;
    EXPECT_EQ(shown.fill, test.fill) << test.code;
    EXPECT_EQ(NumberFormat::compile(test.code)->formatNumber(test.number, LocaleContext()),
              test.text)
        << test.code;
  }
  std::string const marked("a\0b", 3);
  ShownText const text = NumberFormat::compile("0;0;0;<* @>")->showText(marked);
  EXPECT_EQ(text.text, "<" + marked + ">");
  EXPECT_EQ(text.fillAt, 1U);
  EXPECT_EQ(show(std::string("\"a\0b\"0", 6), 5).text, "ab5");
}

TEST(NumberFormat, GeneralIsCutToCharacters) {
  struct WidthCase {
    double number;
    unsigned characters;
    std::string_view text;
  };
  for (WidthCase const& test : std::initializer_list<WidthCase>{
           {1.0 / 3, 12, "0.333333333"},
           {1.0 / 3, 11, "0.333333333"},
           {1.0 / 3, 8, "0.333333"},
           {1.0 / 3, 3, "0.3"},
           {1.0 / 3, 2, "0"},
           {2.0 / 3, 2, "1"},
           {2.0 / 3, 3, "0.7"},
           {99.96, 4, "100"},
           {99.96, 3, "100"},
           {99.96, 2, "(not shown)"},
           {123456789, 9, "123456789"},
           {123456789, 8, "1.23E+08"},
           {123456789, 5, "1E+08"},
           {123456789, 4, "(not shown)"},
           {-123456789, 9, "-1.23E+08"},
           {-1.5, 4, "-1.5"},
           {-1.5, 2, "-2"},
           {-1.5, 1, "(not shown)"},
           {0.00012345, 8, "0.000123"},
           {0.00012345, 5, "1E-04"},
           {0.00012345, 4, "0"},
           {1e100, 11, "1E+100"},
           {1.23456789e100, 8, "1.2E+100"},
           {9.99e99, 5, "(not shown)"},
           {9.99e99, 6, "1E+100"},
           {0, 1, "0"},
           {5, 0, "(not shown)"},
       }) {
    EXPECT_EQ(show("General", test.number, test.characters).text, test.text)
        << test.number << " in " << test.characters;
  }
  EXPECT_EQ(show("\"n\"General", 1.0 / 3, 4).text, "n0.33");
  EXPECT_EQ(show("0.000000", 1.0 / 3, 4).text, "0.333333");
}

TEST(NumberFormat, TellsWhatIsGeneral) {
  EXPECT_TRUE(NumberFormat::compile("General")->isGeneral(1));
  EXPECT_TRUE(NumberFormat::compile("@")->isGeneral(1));
  EXPECT_TRUE(NumberFormat::compile("0;General")->isGeneral(-1));
  EXPECT_FALSE(NumberFormat::compile("0;General")->isGeneral(1));
  EXPECT_FALSE(NumberFormat::compile("yyyy")->isGeneral(1));
}

TEST(NumberFormat, KnowsTheNumericDatesOfALocale) {
  EXPECT_EQ(NumberFormat::findDateCode(LocaleContext("en-US")), "m/d/yyyy");
  EXPECT_EQ(NumberFormat::findDateCode(LocaleContext("de-DE")), "dd.mm.yyyy");
  EXPECT_EQ(NumberFormat::findDateCode(LocaleContext("en-GB")), "dd/mm/yyyy");
  EXPECT_EQ(NumberFormat::findDateCode(LocaleContext("sv-SE")), "yyyy-mm-dd");
}

}  // namespace
}  // namespace Zorv::OfficeUtils
