#include "render/Draw/Pages.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <ostream>

#include "Utils/Exceptions.h"
#include "render/draw/SheetBuilder.h"

namespace Zorv::Render::Draw {

void PrintTo(Extent const& extent, std::ostream* stream) {
  *stream << '[' << extent.from << ", " << extent.to << ')';
}

}  // namespace Zorv::Render::Draw

namespace Zorv::Render::Tests {
namespace {

using Draw::Extent;
using Draw::Page;
using Draw::PageList;
using testing::ElementsAre;

/// Cells of 50 x 10 pixels on paper that has room for 200 x 100.
SheetBuilder makePaged(std::uint32_t rows, std::uint32_t columns) {
  SheetBuilder builder(rows, columns, 10, 50);
  PageSetup& page = builder.sheet().page;
  page.width = 220;
  page.height = 120;
  page.left = page.right = page.top = page.bottom = 10;
  return builder;
}

PageList findPages(SheetBuilder const& builder, std::uint64_t limit = 1000) {
  Picture const picture = builder.build();
  Draw::SheetGeometry const geometry(picture.sheets[0], Draw::PixelGrid());
  return Draw::findPages(geometry, limit);
}

std::vector<Extent> rowsOf(PageList const& list) {
  std::vector<Extent> rows;
  std::ranges::transform(list.pages, std::back_inserter(rows), &Page::rows);
  return rows;
}

std::vector<Extent> columnsOf(PageList const& list) {
  std::vector<Extent> columns;
  std::ranges::transform(list.pages, std::back_inserter(columns), &Page::columns);
  return columns;
}

TEST(Pages, RowsThatDoNotFitGoToTheNextPage) {
  EXPECT_THAT(rowsOf(findPages(makePaged(25, 1))),
              ElementsAre(Extent{0, 100}, Extent{100, 200}, Extent{200, 250}));
}

TEST(Pages, PagesGoDownBeforeTheyGoAcross) {
  PageList const list = findPages(makePaged(20, 8));
  EXPECT_THAT(rowsOf(list),
              ElementsAre(Extent{0, 100}, Extent{100, 200}, Extent{0, 100}, Extent{100, 200}));
  EXPECT_THAT(columnsOf(list),
              ElementsAre(Extent{0, 200}, Extent{0, 200}, Extent{200, 400}, Extent{200, 400}));
}

TEST(Pages, PagesGoAcrossFirstWhereTheSetupSaysSo) {
  SheetBuilder builder = makePaged(20, 8);
  builder.sheet().page.goesAcrossFirst = true;
  EXPECT_THAT(columnsOf(findPages(builder)),
              ElementsAre(Extent{0, 200}, Extent{200, 400}, Extent{0, 200}, Extent{200, 400}));
}

TEST(Pages, HeadingsTakeTheirRoom) {
  SheetBuilder builder = makePaged(20, 4);
  builder.sheet().page.printsHeadings = true;  // 24 x 20 pixels
  PageList const list = findPages(builder);
  EXPECT_THAT(rowsOf(list), ElementsAre(Extent{0, 80}, Extent{80, 160}, Extent{160, 200},
                                        Extent{0, 80}, Extent{80, 160}, Extent{160, 200}));
  EXPECT_EQ(columnsOf(list).front(), (Extent{0, 150}));
}

TEST(Pages, PagesBeginAtBreaks) {
  SheetBuilder builder = makePaged(12, 4);
  builder.sheet().page.rowBreaks = {9, 4};
  builder.sheet().page.columnBreaks = {1};
  PageList const list = findPages(builder);
  EXPECT_THAT(rowsOf(list), ElementsAre(Extent{0, 40}, Extent{40, 90}, Extent{90, 120},
                                        Extent{0, 40}, Extent{40, 90}, Extent{90, 120}));
  EXPECT_EQ(list.pages[0].columns, (Extent{0, 50}));
  EXPECT_EQ(list.pages[3].columns, (Extent{50, 200}));
}

TEST(Pages, TitlesAreRepeatedOnPagesBehindThem) {
  SheetBuilder builder = makePaged(20, 8);
  PageSetup& page = builder.sheet().page;
  page.titleRowsEnd = 2;
  page.titleColumnsEnd = 1;
  PageList const list = findPages(builder);
  ASSERT_EQ(list.pages.size(), 9U);
  EXPECT_EQ(list.pages[0].titleRows, Extent());
  EXPECT_EQ(list.pages[1].titleRows, (Extent{0, 20}));
  EXPECT_EQ(list.pages[1].rows, (Extent{100, 180})) << "the titles take their part of the page";
  EXPECT_EQ(list.pages[2].rows, (Extent{180, 200}));
  EXPECT_EQ(list.pages[0].titleColumns, Extent());
  EXPECT_EQ(list.pages[3].titleColumns, (Extent{0, 50}));
  EXPECT_EQ(list.pages[3].columns, (Extent{200, 350}));
}

TEST(Pages, TitlesThatTakeMostOfAPageAreNotRepeated) {
  SheetBuilder builder = makePaged(20, 1);
  builder.sheet().page.titleRowsEnd = 6;
  PageList const list = findPages(builder);
  ASSERT_EQ(list.pages.size(), 2U);
  EXPECT_EQ(list.pages[1].titleRows, Extent());
}

TEST(Pages, ALineLongerThanAPageIsDivided) {
  SheetBuilder builder = makePaged(2, 1);
  builder.setHeight(0, 250);
  EXPECT_THAT(rowsOf(findPages(builder)),
              ElementsAre(Extent{0, 100}, Extent{100, 200}, Extent{200, 250}, Extent{250, 260}));
}

TEST(Pages, TheScaleChangesWhatFits) {
  SheetBuilder builder = makePaged(20, 1);
  builder.sheet().page.scale = 0.5;
  EXPECT_THAT(rowsOf(findPages(builder)), ElementsAre(Extent{0, 200}));
}

TEST(Pages, ASheetShrinksToFitItsPages) {
  SheetBuilder builder = makePaged(30, 4);
  PageSetup& page = builder.sheet().page;
  page.fitsPages = true;
  page.fitHeight = 1;
  PageList const list = findPages(builder);
  EXPECT_EQ(list.pages.size(), 1U);
  EXPECT_DOUBLE_EQ(list.scale, 0.33);
}

TEST(Pages, ASheetThatFitsKeepsItsSize) {
  SheetBuilder builder = makePaged(3, 2);
  PageSetup& page = builder.sheet().page;
  page.fitsPages = true;
  page.fitHeight = page.fitWidth = 1;
  EXPECT_DOUBLE_EQ(findPages(builder).scale, 1);
}

TEST(Pages, EachPrintAreaBeginsAPage) {
  SheetBuilder builder = makePaged(20, 8);
  builder.sheet().page.areas = {{2, 5, 1, 3}, {10, 12, 0, 1}};
  PageList const list = findPages(builder);
  EXPECT_THAT(rowsOf(list), ElementsAre(Extent{20, 50}, Extent{100, 120}));
  EXPECT_THAT(columnsOf(list), ElementsAre(Extent{50, 150}, Extent{0, 50}));
}

TEST(Pages, ASheetWithoutLinesHasNoPages) {
  EXPECT_TRUE(findPages(SheetBuilder(0, 0)).pages.empty());
}

TEST(Pages, MorePagesThanTheLimitAreAnError) {
  EXPECT_NO_THROW((void)findPages(makePaged(20, 8), 4));
  EXPECT_THROW((void)findPages(makePaged(20, 8), 3), BaseRuntimeError);
}

TEST(Pages, SetupsThatCannotBeGiveSomePaper) {
  constexpr double nan = std::numeric_limits<double>::quiet_NaN();
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (double const strange : {nan, infinity, -infinity, -5.0, 0.0, 1e300}) {
    SheetBuilder builder = makePaged(20, 8);
    PageSetup& page = builder.sheet().page;
    page.width = page.height = page.left = page.right = page.top = page.bottom = strange;
    page.scale = strange;
    page.titleRowsBegin = 7;
    page.titleRowsEnd = 3;
    page.rowBreaks = {0, 0, 4'000'000'000};
    page.areas = {{5, 2, 100, 7}, {0, 4'000'000'000, 0, 4'000'000'000}};
    EXPECT_FALSE(findPages(builder).pages.empty()) << strange;
  }
}

}  // namespace
}  // namespace Zorv::Render::Tests
