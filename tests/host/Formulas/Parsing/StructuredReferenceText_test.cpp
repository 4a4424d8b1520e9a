#include "Formulas/Parsing/StructuredReferenceText.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "Formulas/FormulaParseError.h"

namespace Zorv::Formulas {

namespace {

/// Writes what was read: `headers data totals row`, as far as they are asked for, and the columns.
std::string describeParts(std::string_view text) {
  auto const read = readStructuredReference(text, 0);
  std::string words;
  words += read.headers ? "headers " : "";
  words += read.data ? "data " : "";
  words += read.totals ? "totals " : "";
  words += read.thisRow ? "row " : "";
  return words + (read.firstColumn ? *read.firstColumn + ":" + *read.lastColumn : "all");
}

TEST(StructuredReferenceText, NamesPartsAndColumns) {
  EXPECT_EQ(describeParts("[]"), "data all");
  EXPECT_EQ(describeParts("[Amount]"), "data Amount:Amount");
  EXPECT_EQ(describeParts("[Net amount]"), "data Net amount:Net amount");
  EXPECT_EQ(describeParts("[[Amount]:[Total]]"), "data Amount:Total");
  EXPECT_EQ(describeParts("[ [Amount] : [Total] ]"), "data Amount:Total");
  EXPECT_EQ(describeParts("[#Headers]"), "headers all");
  EXPECT_EQ(describeParts("[#all]"), "headers data totals all");
  EXPECT_EQ(describeParts("[[#Headers],[#Data],[Amount]]"), "headers data Amount:Amount");
  EXPECT_EQ(describeParts("[[#Totals],[Amount]:[Total]]"), "totals Amount:Total");
}

TEST(StructuredReferenceText, AnAtSignIsTheRowOfTheFormula) {
  EXPECT_EQ(describeParts("[@]"), "row all");
  EXPECT_EQ(describeParts("[@Amount]"), "row Amount:Amount");
  EXPECT_EQ(describeParts("[@[Net amount]:[Total]]"), "row Net amount:Total");
  EXPECT_EQ(describeParts("[[#This Row],[Amount]]"), "row Amount:Amount");
}

TEST(StructuredReferenceText, AnApostropheTakesAMeaningAway) {
  EXPECT_EQ(describeParts("[['[a'] '#1]]"), "data [a] #1:[a] #1");
  EXPECT_EQ(describeParts("[Bob''s]"), "data Bob's:Bob's");
}

TEST(StructuredReferenceText, OtherTextsAreRefused) {
  for (std::string_view const text : {"[#Nothing]", "[[A],[B]]", "[[A]:]", "[[#Data],:[B]]",
                                      "[[#Data]:[B]]", "[[A] [B]]", "[[A],]", "[[A]"}) {
    EXPECT_THROW((void)readStructuredReference(text, 0), FormulaParseError) << text;
  }
}

}  // namespace

}  // namespace Zorv::Formulas
