#include "Formulas/Text/R1C1Notation.h"

#include <string>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

/// Corners as text; "none" where there are none. Seen from row 4, column 2, counted from 0.
std::string read(std::string_view text) {
  auto const corners = R1C1Notation::read(text, 4, 2);
  if (!corners) {
    return "none";
  }
  return std::to_string(corners->firstRow) + "," + std::to_string(corners->firstColumn) + " " +
         std::to_string(corners->lastRow) + "," + std::to_string(corners->lastColumn);
}

TEST(R1C1Notation, NumbersAreAbsoluteAndBracketsRelative) {
  EXPECT_EQ(read("R2C3"), "1,2 1,2");
  EXPECT_EQ(read("r[-1]c[2]"), "3,4 3,4");
  EXPECT_EQ(read("RC"), "4,2 4,2");
  EXPECT_EQ(read("R9C9:R1C1"), "0,0 8,8");
}

TEST(R1C1Notation, WholeRowsAndColumns) {
  EXPECT_EQ(read("R3"), "2,0 2,16383");
  EXPECT_EQ(read("C:C[1]"), "0,2 1048575,3");
}

TEST(R1C1Notation, OtherTextsAndPlacesOffTheSheetAreRefused) {
  for (char const* text :
       {"", "X", "R0C1", "R[-5]C", "RC[-3]", "R1C16385", "R1C1:R2", "R[C1", "R1C1x"}) {
    EXPECT_EQ(read(text), "none") << text;
  }
}

TEST(R1C1Notation, RelativeCoordinatesAreWrittenInBrackets) {
  EXPECT_EQ(R1C1Notation::write(6, 1, true, true), "R7C2");
  EXPECT_EQ(R1C1Notation::write(6, 1, true, false), "R7C[2]");
  EXPECT_EQ(R1C1Notation::write(6, 1, false, true), "R[7]C2");
}

}  // namespace

}  // namespace Zorv::Formulas
