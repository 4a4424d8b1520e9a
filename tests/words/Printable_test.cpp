#include "words/Printable.h"

#include <string>

#include <gtest/gtest.h>

namespace Zorv::Words {
namespace {

TEST(Printable, WidthIsThatOnScreen) {
  EXPECT_EQ(displayWidth("abc"), 3U);
  EXPECT_EQ(displayWidth("\xC3\xA4"), 1U);                  // a with diaeresis
  EXPECT_EQ(displayWidth("a\xCC\x88"), 1U);                 // the same of two characters
  EXPECT_EQ(displayWidth("\xE8\xA1\xA8\xE6\xA0\xBC"), 4U);  // two Chinese characters
}

TEST(Printable, NothingInATextMovesTheCursor) {
  EXPECT_EQ(toPrintable("a\nb\tc\x1B[31m"), "a b c [31m");
  EXPECT_EQ(toPrintable("a\x7F"
                        "b"),
            "a b");
  EXPECT_EQ(toPrintable("\xE2\x80\xAE"
                        "abc"),
            " abc");  // right-to-left override
  EXPECT_EQ(toPrintable("a\xFF"), "a\xEF\xBF\xBD");
  EXPECT_EQ(toPrintable("\xC2\x9B"
                        "2J"),
            " 2J");  // a control character beyond ASCII
}

TEST(Printable, CutsByWidthAndNotInsideACharacter) {
  EXPECT_EQ(cutToWidth("abcdef", 3), "abc");
  EXPECT_EQ(cutToWidth("abc", 3), "abc");
  EXPECT_EQ(cutToWidth("\xE8\xA1\xA8\xE6\xA0\xBC", 3), "\xE8\xA1\xA8");
}

TEST(Printable, ShortenedTextsEndInDots) {
  EXPECT_EQ(shorten("abcdef", 6), "abcdef");
  EXPECT_EQ(shorten("abcdefg", 6), "abc...");
  EXPECT_EQ(shorten("a\nbcdefg", 6), "a b...");
  EXPECT_EQ(shorten("\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4", 4), "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4");
}

TEST(Printable, AShortenedTextHasFewBytesHoweverNarrowItIs) {
  std::string marks = "a";
  for (int i = 0; i < 10'000; ++i) {
    marks += "\xCC\x88";  // a mark without a width of its own
  }
  EXPECT_LT(shorten(marks, 10).size(), 200U);
}

TEST(Printable, AMessageIsOneLineOfBoundedLength) {
  EXPECT_EQ(toMessageLine("file: bad\nthing"), "file: bad thing");
  auto const line = toMessageLine("file: " + std::string(2'000'000, 'x') + "; do this");
  EXPECT_LT(line.size(), 800U);
  EXPECT_EQ(line.substr(0, 7), "file: x");
  EXPECT_EQ(line.substr(line.size() - 10), "x; do this");
  EXPECT_NE(line.find(" ... "), std::string::npos);
}

TEST(Printable, JsonEscapesWhatCannotBePrinted) {
  EXPECT_EQ(escapeUnprintable("{\n \"\xC3\xA4\"}"), "{\n \"\xC3\xA4\"}");
  EXPECT_EQ(escapeUnprintable("\"\x7F\""), "\"\\u007f\"");
  EXPECT_EQ(escapeUnprintable("\"\xC2\x9B\""), "\"\\u009b\"");
  EXPECT_EQ(escapeUnprintable("\"\xE2\x80\xAE\""), "\"\\u202e\"");
  EXPECT_EQ(escapeUnprintable("\"\xF3\xA0\x80\x81\""), "\"\\udb40\\udc01\"");  // a tag
}

}  // namespace
}  // namespace Zorv::Words
