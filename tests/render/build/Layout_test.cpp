#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/Build/Lengths.h"
#include "render/Build/ShownLines.h"
#include "render/Build/ShownRange.h"

namespace Zorv::Render {
namespace {

using testing::ElementsAre;
using Workbook::SheetLayout;

std::vector<double> sizesOf(ShownLines const& lines) {
  std::vector<double> sizes;
  for (auto const& line : lines.get()) {
    sizes.push_back(line.size);
  }
  return sizes;
}

std::vector<unsigned long> indicesOf(ShownLines const& lines) {
  std::vector<unsigned long> indices;
  for (auto const& line : lines.get()) {
    indices.push_back(line.index);
  }
  return indices;
}

TEST(Lengths, ColumnsAreWholePixelsWide) {
  EXPECT_EQ(toColumnPixels(0, 7), 0);
  EXPECT_EQ(toColumnPixels(8.43, 7), 59);
  EXPECT_EQ(toColumnPixels(9.140625, 7), 64);
  EXPECT_EQ(toColumnPixels(10.7109375, 7), 75);
  EXPECT_EQ(toColumnPixels(10.83203125, 8), 87);
  EXPECT_EQ(toColumnPixels(-3, 7), 0);
  EXPECT_EQ(toColumnPixels(1e9, 7), 1785);
}

TEST(Lengths, RowsAreAsHighAsTheirPoints) {
  EXPECT_EQ(toRowPixels(15), 20);
  EXPECT_EQ(toRowPixels(12.75), 17);
  EXPECT_EQ(toRowPixels(-1), 0);
  EXPECT_EQ(toRowPixels(1e9), 546);
}

TEST(Lengths, DefaultsComeFromTheSheetOrAreTheUsualOnes) {
  SheetLayout layout;
  EXPECT_EQ(findDefaultColumnPixels(layout, 7), 64);
  EXPECT_EQ(findDefaultRowPixels(layout), 20);
  layout.baseColumnWidth = 10;
  EXPECT_EQ(findDefaultColumnPixels(layout, 7), 80);
  layout.defaultColumnWidth = 10.7109375;
  layout.defaultRowHeight = 30;
  EXPECT_EQ(findDefaultColumnPixels(layout, 7), 75);
  EXPECT_EQ(findDefaultRowPixels(layout), 40);
}

TEST(ShownLines, HiddenRowsAndRowsWithoutAHeightAreNotShown) {
  SheetLayout layout;
  layout.rows = {{.row = 1, .height = 30, .hidden = false, .style = nullptr},
                 {.row = 2, .height = {}, .hidden = true, .style = nullptr},
                 {.row = 4, .height = 0, .hidden = false, .style = nullptr}};
  auto const rows = ShownLines::ofRows(layout, 0, 6);
  EXPECT_THAT(indicesOf(rows), ElementsAre(0U, 1U, 3U, 5U));
  EXPECT_THAT(sizesOf(rows), ElementsAre(20, 40, 20, 20));
  EXPECT_EQ(rows.find(3), 2U);
  EXPECT_EQ(rows.find(2), std::nullopt);
  EXPECT_EQ(rows.atOrAfter(2), 2U);
  EXPECT_EQ(rows.atOrAfter(100), 4U);
  EXPECT_EQ(rows.find(6), std::nullopt);
  EXPECT_TRUE(rows[1].hasOwnSize);
  EXPECT_FALSE(rows[0].hasOwnSize);
}

TEST(ShownLines, RowsThatAreNotWrittenMayBeHidden) {
  SheetLayout layout;
  layout.hidesRows = true;
  layout.rows = {{.row = 1, .height = {}, .hidden = false, .style = nullptr}};
  EXPECT_THAT(indicesOf(ShownLines::ofRows(layout, 0, 4)), ElementsAre(1U));
}

TEST(ShownLines, OfOverlappingColumnEntriesTheFirstCounts) {
  SheetLayout layout;
  layout.columns = {
      {.first = 2, .end = 4, .width = 9.140625, .hidden = false, .style = nullptr},
      {.first = 1, .end = 16'384, .width = 10.7109375, .hidden = false, .style = nullptr},
      {.first = 3, .end = 6, .width = {}, .hidden = true, .style = nullptr}};
  auto const columns = ShownLines::ofColumns(layout, 7, 0, 6);
  EXPECT_THAT(sizesOf(columns), ElementsAre(64, 75, 64, 64, 75, 75));
  EXPECT_THAT(indicesOf(ShownLines::ofColumns(layout, 7, 3, 5)), ElementsAre(3U, 4U));
}

TEST(ShownLines, AreEmptyForAnEmptyRange) {
  auto const rows = ShownLines::ofRows({}, 5, 5);
  EXPECT_EQ(rows.size(), 0U);
  EXPECT_EQ(rows.atOrAfter(5), 0U);
}

TEST(LimitPositions, KeepsTheFirstColumnsAndOfTheseTheFirstRows) {
  EXPECT_EQ(limitPositions({2, 3, 12, 8}, 50), (TableRange{2, 3, 12, 8}));
  EXPECT_EQ(limitPositions({2, 3, 12, 8}, 49), (TableRange{2, 3, 11, 8}));
  EXPECT_EQ(limitPositions({2, 3, 12, 8}, 3), (TableRange{2, 3, 3, 6}));
  EXPECT_TRUE(limitPositions({2, 3, 12, 8}, 0).isEmpty());
  EXPECT_TRUE(limitPositions({}, 10).isEmpty());
}

}  // namespace
}  // namespace Zorv::Render
