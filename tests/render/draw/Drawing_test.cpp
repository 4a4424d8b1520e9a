#include "render/Drawing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <stdexcept>
#include <stop_token>
#include <thread>

#include "Utils/Exceptions.h"
#include "render/draw/DrawnPng.h"
#include "render/draw/Gallery.h"
#include "render/draw/SheetBuilder.h"

namespace Zorv::Render::Tests {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using testing::ThrowsMessage;

constexpr std::array allFormats{DrawingFormat::Png, DrawingFormat::Svg, DrawingFormat::Pdf};

TEST(Drawing, EachFormatHasItsFile) {
  Picture const picture = SheetBuilder(2, 2).build();
  EXPECT_THAT(drawFile(picture, DrawingFormat::Png), StartsWith("\x89PNG"));
  EXPECT_THAT(drawFile(picture, DrawingFormat::Svg), StartsWith("<?xml"));
  EXPECT_THAT(drawFile(picture, DrawingFormat::Pdf), StartsWith("%PDF"));
}

TEST(Drawing, EqualPicturesGiveEqualFiles) {
  for (DrawingFormat const format : allFormats) {
    EXPECT_EQ(drawFile(makeGallery(), format), drawFile(makeGallery(), format));
  }
}

TEST(Drawing, ThePngIsAsLargeAsTheSheetWithItsMargin) {
  Picture const picture = SheetBuilder(3, 4).build();
  DrawnPng const plain(picture);
  EXPECT_EQ(plain.width(), 4 * 64 + 4);
  EXPECT_EQ(plain.height(), 3 * 20 + 4);
  DrawnPng const twice(picture, {.scale = 2});
  EXPECT_EQ(twice.width(), 2 * plain.width());
  EXPECT_EQ(twice.height(), 2 * plain.height());
}

TEST(Drawing, ASheetWithoutLinesIsDrawnInEachFormat) {
  Picture picture;
  picture.sheets.emplace_back();
  for (DrawingFormat const format : allFormats) {
    EXPECT_FALSE(drawFile(picture, format).empty());
  }
  EXPECT_EQ(DrawnPng(picture).width(), 4);
}

TEST(Drawing, APictureWithoutSheetsIsAnError) {
  EXPECT_THAT([] { (void)drawFile(Picture(), DrawingFormat::Png); },
              ThrowsMessage<BaseRuntimeError>("cannot draw: the picture has no sheets"));
}

TEST(Drawing, ScalesOutOfBoundsAreErrors) {
  Picture const picture = SheetBuilder(1, 1).build();
  for (double const scale : {0.0, -1.0, 0.05, 11.0, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THAT([&] { (void)drawFile(picture, DrawingFormat::Svg, {.scale = scale}); },
                ThrowsMessage<BaseRuntimeError>(HasSubstr("it must lie between 0.1 and 10")));
  }
}

TEST(Drawing, APngOfTooManyPixelsIsAnErrorThatNamesItsSize) {
  Picture const picture = SheetBuilder(100, 10).build();
  EXPECT_THAT(
      [&] { (void)drawFile(picture, DrawingFormat::Png, {.pixelLimit = 1'000'000}); },
      ThrowsMessage<BaseRuntimeError>("cannot draw: the picture would be 644 x 2004 pixels, more "
                                      "than 1000000 across or 1 million in all; draw a smaller "
                                      "range or at a smaller scale"));
  EXPECT_THAT([&] { (void)drawFile(SheetBuilder(1, 100, 20, 16384).build(), DrawingFormat::Png); },
              ThrowsMessage<BaseRuntimeError>(HasSubstr("1638404 x 24 pixels")));
}

TEST(Drawing, APdfOfTooManyPagesIsAnErrorThatNamesTheLimit) {
  Picture const picture = SheetBuilder(100, 10).build();
  EXPECT_THAT([&] { (void)drawFile(picture, DrawingFormat::Pdf, {.pageLimit = 2}); },
              ThrowsMessage<BaseRuntimeError>(
                  "cannot draw: there would be more than 2 pages; draw a smaller range"));
}

TEST(Drawing, CellsOutOfPlaceAreErrors) {
  SheetBuilder builder(2, 2);
  builder.text(5, 0, "below");
  EXPECT_THAT(
      [&] { (void)drawFile(builder.build(), DrawingFormat::Png); },
      ThrowsMessage<BaseRuntimeError>("cannot draw: a cell of the picture is out of place"));
}

TEST(Drawing, WhatTheSinkThrowsReachesTheCaller) {
  for (DrawingFormat const format : allFormats) {
    EXPECT_THAT(
        [&] {
          draw(makeGallery(), format, {},
               [](std::string_view) { throw std::domain_error("disk full"); });
        },
        ThrowsMessage<std::domain_error>("disk full"));
  }
}

TEST(Drawing, ABudgetOfStepsEndsTheDrawing) {
  for (DrawingFormat const format : allFormats) {
    WorkBudget budget({.steps = 2000});
    EXPECT_THROW((void)drawFile(makeGallery(), format, {.budget = &budget}), WorkBudgetExceeded);
  }
}

TEST(Drawing, ABudgetOfMemoryEndsTheDrawing) {
  for (DrawingFormat const format : {DrawingFormat::Png, DrawingFormat::Svg}) {
    WorkBudget budget({.bytes = 10'000});
    EXPECT_THROW((void)drawFile(makeGallery(), format, {.budget = &budget}), WorkBudgetExceeded);
  }
}

TEST(Drawing, ARequestToStopEndsTheDrawing) {
  std::stop_source source;
  source.request_stop();
  WorkBudget budget({}, source.get_token());
  EXPECT_THROW((void)drawFile(makeGallery(), DrawingFormat::Png, {.budget = &budget}), WorkStopped);
}

TEST(Drawing, ThreadsDrawAtTheSameTime) {
  std::string const expected = drawFile(makeGallery(), DrawingFormat::Png);
  std::array<std::string, 4> files;
  {
    std::vector<std::jthread> threads;
    for (std::string& file : files) {
      threads.emplace_back([&file] { file = drawFile(makeGallery(), DrawingFormat::Png); });
    }
  }
  for (std::string const& file : files) {
    EXPECT_EQ(file, expected);
  }
}

}  // namespace
}  // namespace Zorv::Render::Tests
