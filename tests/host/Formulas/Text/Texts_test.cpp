#include "Formulas/Text/Texts.h"

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(Texts, CountsCharactersAndNotBytes) {
  EXPECT_EQ(countCharacters(""), 0U);
  EXPECT_EQ(countCharacters("aä€😀"), 4U);
  EXPECT_EQ(bytesOfCharacters("aä€😀", 2), 3U);
  EXPECT_EQ(bytesOfCharacters("aä€😀", 9), 10U);
}

TEST(Texts, AStrayByteCountsAsACharacter) {
  EXPECT_EQ(countCharacters("\xFF\x80"), 2U);
  EXPECT_EQ(countCharacters("\xC3"), 1U);
  EXPECT_EQ(countCharacters("\xE2\x82x"), 3U);
}

TEST(Texts, TakesAFoldedCharacter) {
  std::string_view text = "Äb";
  EXPECT_EQ(takeFolded(text), U'ä');
  EXPECT_EQ(text, "b");
}

TEST(Texts, CompareByFoldedCodePoints) {
  EXPECT_EQ(compareTexts("STRASSE", "strasse"), std::strong_ordering::equal);
  EXPECT_NE(compareTexts("straße", "strasse"), std::strong_ordering::equal);
  EXPECT_LT(compareTexts("a", "ab"), 0);
  EXPECT_GT(compareTexts("ä", "z"), 0);
  EXPECT_LT(compareTexts("Ä", "ö"), 0);
}

TEST(Texts, EqualityAgreesWithTheOrder) {
  EXPECT_TRUE(equalTexts("Item", "iTEM"));
  EXPECT_TRUE(equalTexts("", ""));
  EXPECT_FALSE(equalTexts("a", ""));
  EXPECT_FALSE(equalTexts("@", "`"));
  // The sign of the kelvin folds to an ASCII letter.
  EXPECT_TRUE(equalTexts("\xE2\x84\xAA", "k"));
}

}  // namespace

}  // namespace Zorv::Formulas
