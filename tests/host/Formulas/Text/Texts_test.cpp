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
  EXPECT_EQ(compareTexts("a", "ab"), std::strong_ordering::less);
  EXPECT_EQ(compareTexts("ä", "z"), std::strong_ordering::greater);
  EXPECT_EQ(compareTexts("Ä", "ö"), std::strong_ordering::less);
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
