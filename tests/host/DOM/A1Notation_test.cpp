#include "DOM/A1Notation.h"

#include <gtest/gtest.h>

namespace Zorv::DOM::A1Notation {
namespace {

TEST(A1Notation, CellsAreNamedByLettersAndNumbersFromOne) {
  EXPECT_EQ(toAddress(CellIndex(RowIndex(0), ColumnIndex(0))), "A1");
  EXPECT_EQ(toAddress(CellIndex(RowIndex(8), ColumnIndex(25))), "Z9");
  EXPECT_EQ(toAddress(CellIndex(RowIndex(8), ColumnIndex(26))), "AA9");
  EXPECT_EQ(toAddress(CellIndex(RowIndex(1'048'575), ColumnIndex(16'383))), "XFD1048576");
}

TEST(A1Notation, RangesOfOneCellAreNamedAsTheCell) {
  EXPECT_EQ(toAddress(TableRange{4, 5, 5, 6}), "F5");
  EXPECT_EQ(toAddress(TableRange{4, 5, 9, 7}), "F5:G9");
  EXPECT_EQ(toAddress(std::vector<TableRange>{{0, 0, 1, 1}, {1, 1, 3, 3}}), "A1 B2:C3");
}

TEST(A1Notation, CellsAreReadInAnyCaseAndWithDollars) {
  for (char const* text : {"c9", "C9", "$C9", "C$9", "$c$9"}) {
    EXPECT_EQ(parseCell(text), CellIndex(RowIndex(8), ColumnIndex(2))) << text;
  }
}

TEST(A1Notation, TextsThatNameNoCellOfTheSheetAreRefused) {
  for (char const* text : {"", "C", "9", "C0", "XFE1", "A1048577", "A1B", " A1", "A1:B2", "$$A1",
                           "AAAAAAAAAAAAAAAAAAAA1", "A99999999999999999999", "Ä1"}) {
    EXPECT_FALSE(parseCell(text)) << text;
  }
}

TEST(A1Notation, RangesAreReadWithTheirCornersInAnyOrder) {
  TableRange const range{1, 1, 4, 3};
  EXPECT_EQ(parseRange("B2:C4"), range);
  EXPECT_EQ(parseRange("C4:B2"), range);
  EXPECT_EQ(parseRange("$B$4:$c$2"), range);
  EXPECT_EQ(parseRange("B2"), (TableRange{1, 1, 2, 2}));
}

TEST(A1Notation, WholeColumnsAndRowsReachToTheSheetsEdge) {
  EXPECT_EQ(parseRange("B:D"), (TableRange{0, 1, 1'048'576, 4}));
  EXPECT_EQ(parseRange("3:$5"), (TableRange{2, 0, 5, 16'384}));
  EXPECT_EQ(parseRange("A1:XFD1048576"), (TableRange{0, 0, 1'048'576, 16'384}));
}

TEST(A1Notation, TextsThatNameNoRangeOfTheSheetAreRefused) {
  for (char const* text : {"", "A", "3", "A1:", ":A1", "A1:B", "A:3", "A1:XFE2", "A1:A1048577",
                           "A1:B2:C3", "Sheet1!A1", "#REF!"}) {
    EXPECT_FALSE(parseRange(text)) << text;
  }
}

TEST(A1Notation, ListsOfRangesArePartedBySpacesOrCommas) {
  std::vector<TableRange> const ranges{{0, 0, 1, 1}, {1, 1, 2, 2}};
  EXPECT_EQ(parseRanges("A1 B2"), ranges);
  EXPECT_EQ(parseRanges(" A1,\n B2 "), ranges);
}

TEST(A1Notation, ListsWithAWrongRangeOrNoneAreRefused) {
  EXPECT_FALSE(parseRanges("A1 XFE2"));
  EXPECT_FALSE(parseRanges("  "));
}

TEST(A1Notation, LeadingZerosOfARowAreSkipped) {
  EXPECT_EQ(parseCell("A01"), CellIndex(RowIndex(0), ColumnIndex(0)));
  EXPECT_EQ(parseCell("B0007"), CellIndex(RowIndex(6), ColumnIndex(1)));
  EXPECT_EQ(parseCell("XFD00001048576"), CellIndex(RowIndex(1'048'575), ColumnIndex(16'383)));
  EXPECT_EQ(parseRange("02:3"), (TableRange{1, 0, 3, 16'384}));
  EXPECT_FALSE(parseCell("A00"));
}

TEST(A1Notation, AColumnsDollarStandsBeforeIt) {
  EXPECT_FALSE(parseRange("A$:B"));
  EXPECT_FALSE(parseRange("$:$"));
}

TEST(A1Notation, DollarsMakeCoordinatesAbsolute) {
  CellText const text = readCell("$B7");
  EXPECT_EQ(text.shape, Shape::Inside);
  EXPECT_EQ(text.cell.column.position, 1U);
  EXPECT_FALSE(text.cell.column.isRelative);
  EXPECT_EQ(text.cell.row.position, 6U);
  EXPECT_TRUE(text.cell.row.isRelative);
  EXPECT_FALSE(readColumn("$C")->isRelative);
  EXPECT_TRUE(readColumn("C")->isRelative);
  EXPECT_FALSE(readRow("$9")->isRelative);
  EXPECT_TRUE(readRow("9")->isRelative);
  for (char const* cell : {"A1", "$A1", "A$1", "$XFD$1048576"}) {
    EXPECT_EQ(toText(readCell(cell).cell), cell);
  }
}

TEST(A1Notation, CellsOffTheSheetAreToldFromNames) {
  EXPECT_EQ(readCell("XFD1048576").shape, Shape::Inside);
  EXPECT_EQ(readCell("XFE1").shape, Shape::PastColumns);
  EXPECT_EQ(readCell("A1048577").shape, Shape::PastRows);
  EXPECT_EQ(readCell("ZZZ99999999999999999999").shape, Shape::PastRows);
  EXPECT_EQ(readCell("A4294967297").shape, Shape::PastRows);  // 2^32 + 1
  for (char const* name : {"", "A", "1", "A0", "ABCD1", "A1B", "A1 ", "A-1", "R1C1"}) {
    EXPECT_EQ(readCell(name).shape, Shape::Other) << name;
  }
}

TEST(A1Notation, ColumnsAndRowsOffTheSheetAreRefused) {
  EXPECT_EQ(readColumn("xfd")->position, 16'383U);
  EXPECT_FALSE(readColumn("XFE"));
  EXPECT_FALSE(readColumn("AAAA"));
  EXPECT_FALSE(readColumn("A1"));
  EXPECT_EQ(readRow("1048576")->position, 1'048'575U);
  EXPECT_FALSE(readRow("1048577"));
  EXPECT_FALSE(readRow("0"));
  EXPECT_FALSE(readRow("1.5"));
}

}  // namespace
}  // namespace Zorv::DOM::A1Notation
