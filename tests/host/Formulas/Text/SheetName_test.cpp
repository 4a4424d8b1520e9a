#include "Formulas/Text/SheetName.h"

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(SheetName, PlainNamesStandAsTheyAre) {
  EXPECT_EQ(writeSheetPrefix("Sales"), "Sales!");
  EXPECT_EQ(writeSheetPrefix("_2024.Umsätze"), "_2024.Umsätze!");
}

TEST(SheetName, NamesThatFormulasWouldMisreadAreQuoted) {
  EXPECT_EQ(writeSheetPrefix("My sheet"), "'My sheet'!");
  EXPECT_EQ(writeSheetPrefix("2024"), "'2024'!");
  EXPECT_EQ(writeSheetPrefix("B7"), "'B7'!");
  EXPECT_EQ(writeSheetPrefix("A01"), "'A01'!");
  EXPECT_EQ(writeSheetPrefix("Bob's"), "'Bob''s'!");
}

}  // namespace

}  // namespace Zorv::Formulas
