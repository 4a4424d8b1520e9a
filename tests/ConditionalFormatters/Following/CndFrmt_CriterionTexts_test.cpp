#include "ConditionalFormatters/Following/CndFrmt_CriterionTexts.h"

#include <string>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

using Formulas::CriterionText;

TEST(CriterionTexts, CountTextsAndNumbersApart) {
  CriterionTexts texts;
  CriterionText const five(5.0);
  CriterionText const total(std::string("total"));
  EXPECT_EQ(texts.count(five), 0U);
  EXPECT_EQ(texts.count(total), 0U);
  for (int times = 0; times < 2; ++times) {
    EXPECT_TRUE(texts.add(five));
    EXPECT_TRUE(texts.add(total));
  }
  EXPECT_TRUE(texts.add(total));
  EXPECT_EQ(texts.count(five), 2U);
  EXPECT_EQ(texts.count(total), 3U);
  EXPECT_EQ(texts.count(std::string("5")), 0U);
  texts.remove(five);
  texts.remove(total);
  EXPECT_EQ(texts.count(five), 1U);
  EXPECT_EQ(texts.count(total), 2U);
  texts.remove(five);
  EXPECT_EQ(texts.count(five), 0U);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
