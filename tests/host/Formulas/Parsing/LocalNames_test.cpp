#include "Formulas/Parsing/LocalNames.h"

#include <optional>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(LocalNames, AreFoundWhateverTheirLettersCaseAndPrefix) {
  LocalNames names;
  EXPECT_EQ(names.find("rate"), std::nullopt);
  names.add("_xlpm.Rate", 3);
  names.add("count", 4);
  EXPECT_EQ(names.find("rate"), 3U);
  EXPECT_EQ(names.find("_XLPM.RATE"), 3U);
  EXPECT_EQ(names.find("_xlpm.count"), 4U);
  EXPECT_EQ(names.find("rates"), std::nullopt);
}

TEST(LocalNames, TheInnermostHidesTheOthersUntilItIsForgotten) {
  LocalNames names;
  names.add("x", 0);
  names.add("y", 1);
  auto const size = names.size();
  names.add("X", 2);
  EXPECT_EQ(names.find("x"), 2U);
  names.shrinkTo(size);
  EXPECT_EQ(names.find("x"), 0U);
  EXPECT_EQ(names.find("y"), 1U);
}

TEST(LocalNames, ANameThatWouldBeACellKeepsItsPrefix) {
  EXPECT_EQ(LocalNames::toPlainName("_xlpm.rate"), "rate");
  EXPECT_EQ(LocalNames::toPlainName("_xlpm.A1"), "_xlpm.A1");
  EXPECT_EQ(LocalNames::toPlainName("_xlpm.1"), "_xlpm.1");
}

}  // namespace

}  // namespace Zorv::Formulas
