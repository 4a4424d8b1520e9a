#include "analysis/Diff/CompareCells.h"

#include <chrono>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "DOM/A1Notation.h"
#include "analysis/Diff/ComparedAreas.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Analysis {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::WorkbookBuilder;

OfficeUtils::Clock::TimePoint noon(unsigned day) {
  return std::chrono::sys_days(std::chrono::year(2026) / 11 / std::chrono::day(day)) +
         std::chrono::hours(12);
}

std::string dxfs(std::string const& colour) {
  return "<dxfs count=\"2\"><dxf><fill><patternFill><bgColor rgb=\"" + colour +
         "\"/></patternFill></fill></dxf><dxf/></dxfs>";
}

Workbook::Document makeBook(
    std::string const& ranges, std::string const& rule, std::string const& colour = "FFFF0000",
    std::string const& rows = R"(<row r="1"><c r="A1"><v>7</v></c></row>)") {
  return WorkbookBuilder()
      .setStyles(dxfs(colour))
      .setSheet(rows, "<conditionalFormatting sqref=\"" + ranges + "\">" + rule +
                          "</conditionalFormatting>")
      .load();
}

std::string moreThan(std::string const& bound, int dxf = 0) {
  return "<cfRule type=\"cellIs\" operator=\"greaterThan\" priority=\"1\" dxfId=\"" +
         std::to_string(dxf) + "\"><formula>" + bound + "</formula></cfRule>";
}

std::vector<std::string> findDifferences(Workbook::Document const& first,
                                         Workbook::Document const& second, unsigned firstDay = 21,
                                         unsigned secondDay = 21) {
  std::vector<std::string> cells;
  compareSheets({&first, noon(firstDay)}, 0, {&second, noon(secondDay)}, 0, {},
                [&](CellDifference const& difference) {
                  cells.push_back(DOM::A1Notation::toAddress(difference.cell));
                });
  return cells;
}

TEST(CompareCells, FindsNothingBetweenEqualDocuments) {
  EXPECT_THAT(findDifferences(makeBook("A1:A9", moreThan("5")), makeBook("A1:A9", moreThan("5"))),
              IsEmpty());
}

TEST(CompareCells, FindsOtherConditionsStylesAndRanges) {
  auto const book = makeBook("A1:A9", moreThan("5"));
  EXPECT_THAT(findDifferences(book, makeBook("A1:A9", moreThan("9"))), ElementsAre("A1"));
  EXPECT_THAT(findDifferences(book, makeBook("A1:A9", moreThan("5"), "FF00FF00")),
              ElementsAre("A1"));
  EXPECT_THAT(findDifferences(book, makeBook("A2:A9", moreThan("5"))), ElementsAre("A1"));
  EXPECT_THAT(findDifferences(makeBook("A2:A9", moreThan("5")), book), ElementsAre("A1"));
}

TEST(CompareCells, TakesAStyleThatSetsNothingForNone) {
  EXPECT_THAT(
      findDifferences(makeBook("A1:A9", moreThan("5", 1)), makeBook("A1:A9", moreThan("9"))),
      IsEmpty());
}

TEST(CompareCells, SeesWhatIsDrawn) {
  auto const scale = [](std::string const& colour) {
    return R"(<cfRule type="colorScale" priority="1"><colorScale><cfvo type="min"/><cfvo type="max"/>)"
           R"(<color rgb=")" +
           colour + R"("/><color rgb="FF00FF00"/></colorScale></cfRule>)";
  };
  auto const bar = [](std::string const& length) {
    return "<cfRule type=\"dataBar\" priority=\"1\"><dataBar maxLength=\"" + length +
           R"("><cfvo type="num" val="0"/><cfvo type="num" val="9"/><color rgb="FF0000FF"/></dataBar></cfRule>)";
  };
  auto const icons = [](std::string const& bound) {
    return R"(<cfRule type="iconSet" priority="1"><iconSet><cfvo type="num" val="0"/><cfvo type="num" val=")" +
           bound + R"("/><cfvo type="num" val="90"/></iconSet></cfRule>)";
  };
  auto const compare = [](std::string const& first, std::string const& second) {
    return findDifferences(makeBook("A1:A9", first), makeBook("A1:A9", second));
  };
  EXPECT_THAT(compare(scale("FFFF0000"), scale("FFFF0000")), IsEmpty());
  EXPECT_THAT(compare(scale("FFFF0000"), scale("FF0000FF")), ElementsAre("A1"));
  EXPECT_THAT(compare(bar("90"), bar("90")), IsEmpty());
  EXPECT_THAT(compare(bar("90"), bar("80")), ElementsAre("A1"));
  EXPECT_THAT(compare(icons("5"), icons("6")), IsEmpty());
  EXPECT_THAT(compare(icons("5"), icons("8")), ElementsAre("A1"));
  EXPECT_THAT(compare(icons("5"), bar("90")), ElementsAre("A1"));
  EXPECT_THAT(compare(scale("FFFF0000"), moreThan("9")), ElementsAre("A1"));
}

TEST(CompareCells, SeesTwoMoments) {
  std::string const today =
      R"(<cfRule type="timePeriod" timePeriod="today" priority="1" dxfId="0"/>)";
  // 46347 is 21 November 2026.
  auto const book = makeBook("A1:A9", today, "FFFF0000",
                             R"(<row r="1"><c r="A1"><v>46347</v></c></row>)"
                             R"(<row r="2"><c r="A2"><v>46348</v></c></row>)");
  EXPECT_THAT(findDifferences(book, book), IsEmpty());
  EXPECT_THAT(findDifferences(book, book, 21, 22), ElementsAre("A1", "A2"));
  EXPECT_THAT(findDifferences(book, book, 1, 2), IsEmpty());
}

TEST(CompareCells, VisitsManyPositionsInOrder) {
  std::string const always =
      R"(<cfRule type="expression" priority="1" dxfId="0"><formula>TRUE</formula></cfRule>)";
  auto const cells = findDifferences(
      makeBook(
          "A1:J9999 B5", always, "FFFF0000",
          R"(<row r="1"><c r="A1"><v>1</v></c></row><row r="9999"><c r="J9999"><v>1</v></c></row>)"),
      makeBook("A1:J9998", always));
  EXPECT_THAT(cells, ElementsAre("A9999", "B9999", "C9999", "D9999", "E9999", "F9999", "G9999",
                                 "H9999", "I9999", "J9999"));
}

TEST(CompareCells, LooksAtTheEdgesOfRangesFarBeyondTheData) {
  std::string const blank =
      R"(<cfRule type="containsBlanks" priority="1" dxfId="0"><formula>LEN(TRIM(A1))=0</formula></cfRule>)";
  EXPECT_THAT(findDifferences(makeBook("A1:A1048576", blank), makeBook("A1:A1048575", blank)),
              ElementsAre("A1048576"));
  EXPECT_THAT(findDifferences(makeBook("A1:XFD1048576", blank), makeBook("A1:XFC1048576", blank)),
              ElementsAre("XFD1", "XFD1048576"));
}

TEST(CompareCells, LooksAtExistingCellsAloneOfAVeryLargeUsedRange) {
  std::string const corners = R"(<row r="1"><c r="A1"><v>7</v></c><c r="B1"><v>8</v></c></row>)"
                              R"(<row r="70000"><c r="ZZ70000"><v>9</v></c></row>)";
  auto const first = makeBook("A1:XFD1048576", moreThan("5"), "FFFF0000", corners);
  auto const second = makeBook("A1:XFD1048576", moreThan("8"), "FFFF0000", corners);
  EXPECT_THAT(findDifferences(first, second), ElementsAre("A1", "B1"));
  auto const areas = findComparedAreas({&first, 0}, {&second, 0});
  EXPECT_THAT(areas, testing::Contains(TableRange{0, 0, 1, 2}));
  // The sides along 70,000 rows are left out.
  unsigned long positions = 0;
  for (TableRange const& area : areas) {
    positions += (area.endRow - area.firstRow) * (area.endColumn - area.firstColumn);
  }
  EXPECT_LT(positions, 5'000U);
}

TEST(CompareCells, EndsWithItsBudget) {
  auto const book = makeBook("A1:J9000", moreThan("5"));
  WorkBudget budget({.steps = 1'000});
  EXPECT_THROW(compareSheets({&book, noon(21)}, 0, {&book, noon(21)}, 0, {.budget = &budget},
                             [](CellDifference const& /*difference*/) {}),
               WorkBudgetExceeded);
}

}  // namespace
}  // namespace Zorv::Analysis
