#include "render/Build/TextWidths.h"

#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

FontMeasures measuresOf(std::string name, double size, bool bold = false) {
  return findMeasures({.name = std::move(name), .size = size, .colour = {}, .bold = bold});
}

TEST(TextWidths, ADigitOfTheDefaultFontHasSevenPixels) {
  EXPECT_DOUBLE_EQ(measureText("0", measuresOf("Calibri", 11)), 7);
  EXPECT_DOUBLE_EQ(measureText("0123456789", measuresOf("Calibri", 11)), 70);
  EXPECT_DOUBLE_EQ(measureText("0", measuresOf("Calibri", 22)), 14);
  EXPECT_DOUBLE_EQ(measuresOf("Calibri", 11).digit, 7);
}

TEST(TextWidths, ColumnsAreMeasuredByDigitsOfWholePixels) {
  EXPECT_EQ(findDigitWidth({.name = "Calibri", .size = 11, .colour = {}}), 7);
  EXPECT_EQ(findDigitWidth({.name = "Calibri", .size = 12, .colour = {}}), 8);
  EXPECT_EQ(findDigitWidth({.name = "Arial", .size = 10, .colour = {}}), 7);
  EXPECT_EQ(findDigitWidth({.name = "ARIAL", .size = 8, .colour = {}}), 6);
  EXPECT_EQ(findDigitWidth({.name = "Courier New", .size = 10, .colour = {}}), 8);
  EXPECT_EQ(findDigitWidth({.name = "Calibri", .size = 1, .colour = {}}), 1);
}

TEST(TextWidths, LettersHaveWidthsOfTheirOwn) {
  FontMeasures const font = measuresOf("Calibri", 11);
  EXPECT_GT(measureText("W", font), 2 * measureText("l", font));
  EXPECT_GT(measureText("W", measuresOf("Calibri", 11, true)), measureText("W", font));
  EXPECT_EQ(measureText("0", measuresOf("Calibri", 11, true)), measureText("0", font));
  EXPECT_GT(measureText("a", measuresOf("Verdana", 11)), measureText("a", font));
  FontMeasures const courier = measuresOf("Courier New", 11, true);
  EXPECT_EQ(measureText("i", courier), measureText("W", courier));
}

TEST(TextWidths, CharactersOfSeveralBytesCountOnce) {
  FontMeasures const font = measuresOf("Calibri", 11);
  EXPECT_EQ(measureText("é", font), measureText("ü", font));
  EXPECT_EQ(measureText("e\u0301", font), measureText("e", font));
  EXPECT_GT(measureText("漢", font), 1.5 * measureText("é", font));
  EXPECT_EQ(measureText("\xC3", font), measureText("é", font));  // cut in the middle
}

TEST(TextWidths, ALineOfTheDefaultFontFillsADefaultRow) {
  EXPECT_EQ(measuresOf("Calibri", 11).lineHeight, 20);
  EXPECT_EQ(measuresOf("Calibri", 14).lineHeight, 25);
  EXPECT_EQ(measuresOf("Arial", 10).lineHeight, 17);
}

TEST(TextWidths, LinesAreBrokenAtSpacesAndInWordsThatAreTooLong) {
  FontMeasures const font = measuresOf("Calibri", 11);
  EXPECT_EQ(countWrappedLines("", font, 50), 1);
  EXPECT_EQ(countWrappedLines("1234567", font, 50), 1);
  EXPECT_EQ(countWrappedLines("12345678", font, 50), 2);
  EXPECT_EQ(countWrappedLines("1234 1234 1234", font, 50), 3);
  EXPECT_EQ(countWrappedLines("12 34 56 78", font, 60), 2);
  EXPECT_EQ(countWrappedLines("1\n2\n", font, 50), 3);
  EXPECT_EQ(countWrappedLines(std::string(100, '0'), font, 70), 10);
  EXPECT_GT(countWrappedLines("12", font, 0), 1);
}

}  // namespace
}  // namespace Zorv::Render
