#include "workbook/Addresses.h"

#include <gtest/gtest.h>

namespace Zorv::Workbook {
namespace {

TEST(Addresses, CellsAreNamedByLettersAndNumbersFromOne) {
  EXPECT_EQ(toAddress(CellIndex(RowIndex(0), ColumnIndex(0))), "A1");
  EXPECT_EQ(toAddress(CellIndex(RowIndex(8), ColumnIndex(25))), "Z9");
  EXPECT_EQ(toAddress(CellIndex(RowIndex(8), ColumnIndex(26))), "AA9");
  EXPECT_EQ(toAddress(CellIndex(RowIndex(1'048'575), ColumnIndex(16'383))), "XFD1048576");
}

TEST(Addresses, RangesOfOneCellAreNamedAsTheCell) {
  EXPECT_EQ(toAddress(TableRange{4, 5, 5, 6}), "F5");
  EXPECT_EQ(toAddress(TableRange{4, 5, 9, 7}), "F5:G9");
  EXPECT_EQ(toAddress(std::vector<TableRange>{{0, 0, 1, 1}, {1, 1, 3, 3}}), "A1 B2:C3");
}

TEST(Addresses, CellsAreReadInAnyCaseAndWithDollars) {
  for (char const* text : {"c9", "C9", "$C9", "C$9", "$c$9"}) {
    EXPECT_EQ(parseCell(text), CellIndex(RowIndex(8), ColumnIndex(2))) << text;
  }
}

TEST(Addresses, TextsThatNameNoCellOfTheSheetAreRefused) {
  for (char const* text : {"", "C", "9", "C0", "XFE1", "A1048577", "A1B", " A1", "A1:B2", "$$A1",
                           "AAAAAAAAAAAAAAAAAAAA1", "A99999999999999999999", "Ä1"}) {
    EXPECT_FALSE(parseCell(text)) << text;
  }
}

TEST(Addresses, RangesAreReadWithTheirCornersInAnyOrder) {
  TableRange const range{1, 1, 4, 3};
  EXPECT_EQ(parseRange("B2:C4"), range);
  EXPECT_EQ(parseRange("C4:B2"), range);
  EXPECT_EQ(parseRange("$B$4:$c$2"), range);
  EXPECT_EQ(parseRange("B2"), (TableRange{1, 1, 2, 2}));
}

TEST(Addresses, WholeColumnsAndRowsReachToTheSheetsEdge) {
  EXPECT_EQ(parseRange("B:D"), (TableRange{0, 1, 1'048'576, 4}));
  EXPECT_EQ(parseRange("3:$5"), (TableRange{2, 0, 5, 16'384}));
  EXPECT_EQ(parseRange("A1:XFD1048576"), (TableRange{0, 0, 1'048'576, 16'384}));
}

TEST(Addresses, TextsThatNameNoRangeOfTheSheetAreRefused) {
  for (char const* text : {"", "A", "3", "A1:", ":A1", "A1:B", "A:3", "A1:XFE2", "A1:A1048577",
                           "A1:B2:C3", "Sheet1!A1", "#REF!"}) {
    EXPECT_FALSE(parseRange(text)) << text;
  }
}

TEST(Addresses, ListsOfRangesArePartedBySpacesOrCommas) {
  std::vector<TableRange> const ranges{{0, 0, 1, 1}, {1, 1, 2, 2}};
  EXPECT_EQ(parseRanges("A1 B2"), ranges);
  EXPECT_EQ(parseRanges(" A1,\n B2 "), ranges);
}

TEST(Addresses, ListsWithAWrongRangeOrNoneAreRefused) {
  EXPECT_FALSE(parseRanges("A1 XFE2"));
  EXPECT_FALSE(parseRanges("  "));
}

}  // namespace
}  // namespace Zorv::Workbook
