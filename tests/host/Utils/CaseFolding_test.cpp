#include "Utils/CaseFolding.h"

#include <gtest/gtest.h>

namespace Zorv {
namespace {

TEST(CaseFolding, AsciiLettersChangeAndNothingElseDoes) {
  EXPECT_EQ(toAsciiUpper("azAZ09_\xC3\xA4"), "AZAZ09_\xC3\xA4");
  EXPECT_EQ(toAsciiUpper('`'), '`');
  EXPECT_EQ(toAsciiUpper('{'), '{');
  EXPECT_EQ(toAsciiLower('A'), 'a');
  EXPECT_EQ(toAsciiLower('Z'), 'z');
  EXPECT_EQ(toAsciiLower('@'), '@');
  EXPECT_EQ(toAsciiLower('['), '[');
}

TEST(CaseFolding, AsciiLettersAndDigitsAreTold) {
  for (char const letter : {'a', 'z', 'A', 'Z'}) {
    EXPECT_TRUE(isAsciiLetter(letter)) << letter;
  }
  for (char const other : {'@', '[', '`', '{', '0', '\xE4'}) {
    EXPECT_FALSE(isAsciiLetter(other)) << other;
  }
  EXPECT_TRUE(isAsciiDigit('0'));
  EXPECT_TRUE(isAsciiDigit('9'));
  EXPECT_FALSE(isAsciiDigit('/'));
  EXPECT_FALSE(isAsciiDigit(':'));
}

TEST(CaseFolding, TextsFoldInFull) {
  EXPECT_EQ(foldCase("Straße ÄΣ"), "strasse äσ");
  EXPECT_EQ(foldCase("MASSE"), foldCase("Maße"));
  EXPECT_EQ(foldCase("@AZ[`az{"), "@az[`az{");
  EXPECT_EQ(foldCase("A\x80"), "a\xEF\xBF\xBD");
  EXPECT_EQ(foldCase(""), "");
}

TEST(CaseFolding, TurkicTextsKeepTheDotOfTheLetterI) {
  EXPECT_EQ(foldCase("I"), "i");
  EXPECT_EQ(foldCase("I", CaseFolding::Turkic), "ı");
  EXPECT_EQ(foldCase("İ", CaseFolding::Turkic), "i");
}

TEST(CaseFolding, CodePointsFoldOneToOne) {
  EXPECT_EQ(foldCodePoint(U'Ä'), U'ä');
  EXPECT_EQ(foldCodePoint(U'ß'), U'ß');
  EXPECT_EQ(foldCodePoint(0x212A), U'k');  // the sign of the kelvin
}

}  // namespace
}  // namespace Zorv
