#include "render/Html/SheetTable.h"

#include <cstddef>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "render/MakePicture.h"

namespace Zorv::Render {
namespace {

using testing::HasSubstr;
using testing::Not;

std::size_t countOf(std::string_view text, std::string_view part) {
  std::size_t count = 0;
  for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1)) {
    ++count;
  }
  return count;
}

class SheetTableTest : public testing::Test {
protected:
  /// The table of the sheet.
  std::string write(TestSupport::MadePicture& made) {
    styles = {};
    std::string out;
    SheetTable(made.sheet(), "t0", styles, graphics).append(out);
    return out;
  }

  /// A row of the table, from its heading on.
  static std::string rowOf(std::string const& table, int row) {
    auto const begin =
        table.find("<th scope=\"row\" role=\"rowheader\">" + std::to_string(row) + "<");
    return table.substr(begin, table.find("</tr>", begin) - begin);
  }

  StyleSheet styles;
  PageGraphics graphics;
};

TEST_F(SheetTableTest, HeadingsNameColumnsAndRows) {
  TestSupport::MadePicture made(3, 2);
  made.sheet().columns[1].index = 27;
  made.sheet().rows[2].index = 9;
  auto const table = write(made);
  EXPECT_THAT(table, HasSubstr("<th scope=\"col\" role=\"columnheader\">A</th>"));
  EXPECT_THAT(table, HasSubstr("<th scope=\"col\" role=\"columnheader\">AB</th>"));
  EXPECT_THAT(table, HasSubstr("aria-rowcount=\"11\" aria-colcount=\"3\""));
  EXPECT_THAT(table, HasSubstr("<tr role=\"row\" aria-rowindex=\"11\" class=\"z\">"
                               "<th scope=\"row\" role=\"rowheader\">10</th>"));
}

TEST_F(SheetTableTest, PositionsWithoutACellKeepTheirPlace) {
  TestSupport::MadePicture made(1, 4);
  made.add(0, 2, "x");
  EXPECT_EQ(countOf(rowOf(write(made), 1), "<td"), 4U);
}

TEST_F(SheetTableTest, LongRunsOfPositionsWithoutACellAreOneElement) {
  TestSupport::MadePicture made(1, 500);
  made.add(0, 0, "x");
  auto const row = rowOf(write(made), 1);
  EXPECT_EQ(countOf(row, "<td"), 2U);
  EXPECT_THAT(row, HasSubstr("colspan=\"499\""));
}

TEST_F(SheetTableTest, RunsEndWhereAColumnHasALook) {
  TestSupport::MadePicture made(1, 100);
  made.sheet().looks.emplace_back().wraps = true;
  made.sheet().columns[50].look = 1;
  auto const row = rowOf(write(made), 1);
  EXPECT_THAT(row, HasSubstr("colspan=\"50\""));
  EXPECT_THAT(row, HasSubstr("colspan=\"49\""));
}

TEST_F(SheetTableTest, MergedCellsSpanAndTheirNeighboursStayInPlace) {
  TestSupport::MadePicture made(2, 4);
  auto& merged = made.add(0, 0, "wide");
  merged.rowCount = 2;
  merged.columnCount = 2;
  made.add(1, 2, "beside");
  auto const table = write(made);
  EXPECT_THAT(rowOf(table, 1), HasSubstr("<td rowspan=\"2\" colspan=\"2\""));
  EXPECT_EQ(countOf(rowOf(table, 2), "<td"), 2U);
  EXPECT_THAT(rowOf(table, 2), HasSubstr("aria-colindex=\"4\""));
  EXPECT_THAT(styles.getText(), HasSubstr("{height:40px}"));
  EXPECT_THAT(styles.getText(), HasSubstr("{grid-column:4}"));
}

TEST_F(SheetTableTest, BlocksDoNotEndInsideMergedCells) {
  TestSupport::MadePicture made(300, 2);
  made.add(60, 0, "tall").rowCount = 100;
  made.add(159, 1, "tall as well").rowCount = 20;
  auto const table = write(made);
  // 32 rows, 147 up to the end of the second merged cell, three times 32, and 25.
  EXPECT_EQ(countOf(table, "<tbody"), 6U);
  EXPECT_THAT(styles.getText(), HasSubstr("contain-intrinsic-block-size:auto 2940px"));
  EXPECT_THAT(styles.getText(), HasSubstr("contain-intrinsic-block-size:auto 500px"));
}

TEST_F(SheetTableTest, FrozenRowsAreABlockOfTheirOwnAndFrozenColumnsStick) {
  TestSupport::MadePicture made(10, 3);
  made.sheet().frozenRows = 2;
  made.sheet().frozenColumns = 2;
  auto const table = write(made);
  EXPECT_EQ(countOf(table, "<tbody role=\"rowgroup\" class=\"frozen\">"), 1U);
  EXPECT_THAT(table, HasSubstr("<th scope=\"col\" role=\"columnheader\" class=\"f "));
  EXPECT_EQ(countOf(rowOf(table, 5), "class=\"f "), 2U);
  EXPECT_THAT(styles.getText(), HasSubstr("{--at:30px}"));
  EXPECT_THAT(styles.getText(), HasSubstr("{--at:94px}"));
}

TEST_F(SheetTableTest, AnEdgeThatTwoCellsShareIsDrawnOnce) {
  TestSupport::MadePicture made(2, 2);
  DOM::BorderLine const thin{.style = DOM::LineStyle::Thin, .colour = DOM::Colour{1, 2, 3}};
  auto& edges = made.sheet().edges.emplace_back();
  edges.left = edges.right = edges.top = edges.bottom = thin;
  for (std::uint32_t position = 0; position < 4; ++position) {
    made.add(position / 2, position % 2, "x").edges = 1;
  }
  (void)write(made);
  // All four sides of the first cell, then without the left one, without the upper one, and without
  // both.
  auto const& text = styles.getText();
  EXPECT_EQ(countOf(text, "#010203,#010203"), 4U + 3 + 3 + 2);
}

TEST_F(SheetTableTest, GridLinesShowWhereTheSheetHasThem) {
  TestSupport::MadePicture made(1, 3);
  EXPECT_THAT(write(made), HasSubstr("<i></i><i></i><i></i>"));
  made.sheet().showsGridLines = false;
  auto const bare = write(made);
  EXPECT_THAT(bare, Not(HasSubstr("<i>")));
  EXPECT_THAT(bare, HasSubstr("<div class=\"canvas t0 bare\">")) << "rows have no lines either";
}

TEST_F(SheetTableTest, SheetsFromRightToLeftAreMirrored) {
  TestSupport::MadePicture made(1, 1);
  EXPECT_THAT(write(made), Not(HasSubstr("dir=")));
  made.sheet().rightToLeft = true;
  EXPECT_THAT(write(made), HasSubstr("<div class=\"canvas t0\" dir=\"rtl\">"));
}

TEST_F(SheetTableTest, RowsThatNoRuleTouchesAreMarked) {
  TestSupport::MadePicture made(2, 1);
  auto const decision = made.addRule({0, 0, 1, 1}, "cell > 5");
  made.add(0, 0, "6").decision = decision;
  auto const table = write(made);
  EXPECT_THAT(table, HasSubstr("aria-rowindex=\"2\"><th"));
  EXPECT_THAT(table, HasSubstr("aria-rowindex=\"3\" class=\"z\"><th"));
  EXPECT_THAT(table, HasSubstr("<td class=\"d1\">6</td>"));
}

TEST_F(SheetTableTest, EqualWidthsAndCommonHeightsAreWrittenOnce) {
  TestSupport::MadePicture made(3, 40);
  made.sheet().rows[1].size = 33.5;
  auto const table = write(made);
  EXPECT_THAT(styles.getText(), HasSubstr("grid-template-columns:22px repeat(40,64px)"));
  EXPECT_THAT(styles.getText(), HasSubstr(".t0 tr{height:20px}"));
  EXPECT_THAT(styles.getText(), HasSubstr("{height:33.5px!important}"));
  EXPECT_EQ(countOf(table, "<tr role=\"row\" aria-rowindex=\"2\" class=\"z\">"), 1U);
}

}  // namespace
}  // namespace Zorv::Render
