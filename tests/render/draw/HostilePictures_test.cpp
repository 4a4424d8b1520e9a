#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "render/draw/DrawnPng.h"
#include "render/draw/SheetBuilder.h"
#include "support/Sanitized.h"

namespace Zorv::Render::Tests {
namespace {

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

void drawInEachFormat(Picture const& picture) {
  for (DrawingFormat const format : {DrawingFormat::Png, DrawingFormat::Svg, DrawingFormat::Pdf}) {
    EXPECT_FALSE(drawFile(picture, format).empty());
  }
}

TEST(HostilePictures, FontsOfAnySizeAreDrawn) {
  for (double const size : {0.0, -3.0, 1e-9, 10'000.0, 1e300, infinite, notANumber}) {
    SheetBuilder builder(2, 3);
    builder.text(0, 0, "text");
    builder.text(1, 0, "wrapped text שלום");
    for (std::uint32_t const row : {0U, 1U}) {
      builder.look(row, 0, [&](Look& look) {
        look.font.size = size;
        look.wraps = row == 1;
        look.shrinksToFit = true;
      });
    }
    PictureCell& rich = builder.text(0, 1, "ab");
    rich.runs = 1;
    Font font;
    font.size = size;
    builder.sheet().richTexts.push_back({{"a", font}, {"b", {}}});
    builder.cell(1, 1).icon = Visuals::Icon{};
    builder.look(1, 1, [&](Look& look) { look.font.size = size; });
    drawInEachFormat(builder.build());
  }
}

TEST(HostilePictures, LinesOfAnySizeAreDrawn) {
  for (double const size : {0.0, -20.0, 1e-12, notANumber}) {
    SheetBuilder builder(3, 3);
    builder.text(1, 1, "text").freeRight = 1;
    builder.look(1, 1, [](Look& look) { look.wraps = true; });
    builder.setHeight(1, size);
    builder.setWidth(1, size);
    drawInEachFormat(builder.build());
  }
  for (double const size : {1e9, infinite}) {
    SheetBuilder builder(2, 2);
    builder.setWidth(1, size);
    builder.text(0, 1, "text").horizontal = DOM::HorizontalAlignment::Fill;
    EXPECT_EQ(DrawnPng(builder.build()).width(), 64 + 16384 + 4);
  }
}

TEST(HostilePictures, AMillionMergedCellsAreDrawn) {
  constexpr std::uint32_t rows = TestSupport::sanitized ? 20 : 2000;
  constexpr std::uint32_t columns = 500;
  SheetBuilder builder(rows + 1, columns, 1, 2);
  auto& cells = builder.sheet().cells;
  for (std::uint32_t row = 0; row < rows; ++row) {
    for (std::uint32_t column = 0; column < columns; ++column) {
      PictureCell& cell = cells.emplace_back();
      cell.row = row;
      cell.column = column;
      cell.rowCount = 2;
    }
  }
  EXPECT_EQ(DrawnPng(builder.build()).height(), static_cast<int>(rows) + 1 + 4);
}

TEST(HostilePictures, CountsBeyondTheSheetAreCut) {
  constexpr std::uint32_t most = std::numeric_limits<std::uint32_t>::max();
  SheetBuilder builder(3, 3);
  PictureCell& cell = builder.text(1, 1, "text");
  cell.rowCount = cell.columnCount = cell.freeLeft = cell.freeRight = most;
  builder.cell(0, 0).rowCount = 0;
  drawInEachFormat(builder.build());
}

TEST(HostilePictures, LongTextsAreCutToWhatIsSeen) {
  std::string words;
  while (words.size() < 3'000'000) {
    words += "word שלום ";
  }
  SheetBuilder builder(1, 8);
  for (std::uint32_t column = 0; column < 8; ++column) {
    builder.text(0, column, words).horizontal = static_cast<DOM::HorizontalAlignment>(column);
    builder.look(0, column, [&](Look& look) { look.wraps = column % 2 == 0; });
  }
  drawInEachFormat(builder.build());
}

TEST(HostilePictures, MalformedTextsAreDrawn) {
  for (std::string const text : {"\xFF\xFE", "a\x80z", "\xE2\x82", "\xF0\x9F\x98\x80",
                                 "\xED\xA0\x80", "a\tb", "\n\n\n", "\x01\x02"}) {
    SheetBuilder builder(1, 4);
    builder.sheet().name = text;
    builder.text(0, 0, text);
    builder.text(0, 1, text);
    builder.look(0, 1, [](Look& look) { look.isStacked = true; });
    builder.text(0, 2, text).splitAt = 1;
    builder.text(0, 3, std::string("\0b", 2));
    Picture picture = builder.build();
    picture.name = text;
    drawInEachFormat(picture);
  }
}

TEST(HostilePictures, NumbersThatAreNoneAreDrawn) {
  Visuals::DataBar bar;
  bar.fill = bar.border = bar.axisColour = DOM::Colour{1, 2, 3};
  for (double const strange : {notANumber, infinite, -infinite, 1e300}) {
    SheetBuilder builder(1, 4);
    builder.cell(0, 0).bar = Visuals::ShownBar{0, {strange, strange, strange}, true, &bar};
    builder.text(0, 1, "text");
    builder.look(0, 1, [&](Look& look) { look.indent = strange; });
    for (std::uint32_t const column : {2U, 3U}) {
      builder.look(0, column, [&](Look& look) {
        look.fill.pattern = DOM::FillPattern::Gradient;
        look.fill.gradient.emplace();
        look.fill.gradient->type = static_cast<DOM::GradientType>(column - 2);
        look.fill.gradient->degree = look.fill.gradient->left = strange;
        look.fill.gradient->stops = {{strange, {}}, {0.5, {}}, {strange, {}}};
      });
    }
    drawInEachFormat(builder.build());
  }
}

TEST(HostilePictures, ThousandsOfFontsAreDrawn) {
  SheetBuilder builder(1000, 1);
  builder.sheet().cells.resize(1000);
  for (std::uint32_t row = 0; row < 1000; ++row) {
    builder.sheet().cells[row].row = row;
    builder.sheet().cells[row].text = "x";
    builder.sheet().cells[row].look = row;
    Look look;
    look.font.name = "Font " + std::to_string(row);
    look.font.size = 5 + row * 0.1;
    builder.sheet().looks.push_back(look);
  }
  EXPECT_FALSE(drawFile(builder.build(), DrawingFormat::Png).empty());
}

TEST(HostilePictures, OnlyAddressesOfTheWebBecomeLinks) {
  auto const linksOf = [](std::string const& address) {
    SheetBuilder builder(1, 1);
    builder.text(0, 0, "link").link = 1;
    builder.sheet().links = {address};
    return drawFile(builder.build(), DrawingFormat::Pdf).find("/URI") != std::string::npos;
  };
  EXPECT_TRUE(linksOf("https://example.org/a?b=c'd"));
  EXPECT_TRUE(linksOf("mailto:a@example.org"));
  EXPECT_FALSE(linksOf("javascript:alert(1)"));
  EXPECT_FALSE(linksOf("file:///etc/passwd"));
  EXPECT_FALSE(linksOf("#Sheet2!A1"));
  EXPECT_FALSE(linksOf("https://example.org/\x01"));
  EXPECT_FALSE(linksOf("https://" + std::string(3000, 'a')));
}

}  // namespace
}  // namespace Zorv::Render::Tests
