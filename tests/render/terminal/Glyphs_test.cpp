#include "render/Terminal/Glyphs.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

using testing::ElementsAre;

std::vector<std::string> toTexts(std::vector<GlyphLine> const& lines) {
  std::vector<std::string> texts;
  for (GlyphLine const& line : lines) {
    auto& text = texts.emplace_back();
    for (Glyph const& glyph : line) {
      text += glyph.text;
    }
  }
  return texts;
}

std::vector<std::string> breakText(std::string_view text, TextSpace const& space) {
  return toTexts(breakIntoLines({text}, space));
}

std::size_t widthOf(std::string_view text) { return measureWidth(splitIntoGlyphs(text, 1'000)); }

TEST(Glyphs, WidthIsThatOfTheTerminal) {
  EXPECT_EQ(widthOf("abc"), 3U);
  EXPECT_EQ(widthOf("äöü"), 3U);
  EXPECT_EQ(widthOf("日本語"), 6U);
  EXPECT_EQ(widthOf("ｆｕｌｌ"), 8U);
  EXPECT_EQ(widthOf("e\u0301"), 1U);
}

TEST(Glyphs, EmojiOfSeveralCharactersAreAsWideOnEveryTerminal) {
  struct Case {
    char const* text;
    char const* expected;
  };
  for (auto const& [text, expected] : {
           Case{"\U0001F468\u200D\U0001F469", "\U0001F468\U0001F469"},  // joined
           Case{"\u2764\uFE0F", "\u2764"},                              // shown in colours
           Case{"\U0001F44D\U0001F3FD", "\U0001F44D"},                  // with a skin tone
           Case{"\u0915\u094D\u200D", "\u0915\u094D\u200D"},            // a joiner of letters
       }) {
    std::string joined;
    for (Glyph const& glyph : splitIntoGlyphs(text, 100)) {
      joined += glyph.text;
    }
    EXPECT_EQ(joined, expected);
  }
}

TEST(Glyphs, ControlCharactersAndBytesThatAreNoTextAreReplaced) {
  EXPECT_THAT(breakText("a\x1B[31mb\tc\xFF", {.width = 20}), ElementsAre("a [31mb c\uFFFD"));
  EXPECT_THAT(breakText("a\u202Eb", {.width = 20}), ElementsAre("a b"));
}

TEST(Glyphs, MarksWithoutEndAreCut) {
  std::string text = "a";
  for (int i = 0; i < 10'000; ++i) {
    text += "\u0301";
  }
  auto const glyphs = splitIntoGlyphs(text + "b", 100);
  ASSERT_EQ(glyphs.size(), 2U);
  EXPECT_LE(glyphs.front().text.size(), 30U);
  EXPECT_EQ(glyphs.back().text, "b");
}

TEST(Glyphs, AMarkWithoutALetterStandsOnASpace) {
  EXPECT_THAT(breakText("\u0301a", {.width = 5}), ElementsAre(" \u0301a"));
}

TEST(Glyphs, ATextThatDoesNotFitEndsWithAnEllipsis) {
  EXPECT_THAT(breakText("abcde", {.width = 5}), ElementsAre("abcde"));
  EXPECT_THAT(breakText("abcdef", {.width = 5}), ElementsAre("abcd…"));
  EXPECT_THAT(breakText("日本語", {.width = 5}), ElementsAre("日本…"));
  EXPECT_THAT(breakText("abc", {.width = 1}), ElementsAre("…"));
}

TEST(Glyphs, TextsWrapBetweenWords) {
  TextSpace const space{.width = 7, .lines = 4, .wraps = true};
  EXPECT_THAT(breakText("one two three", space), ElementsAre("one two", "three"));
  EXPECT_THAT(breakText("one  two three", space), ElementsAre("one", "two", "three"));
  EXPECT_THAT(breakText("one\ntwo", space), ElementsAre("one", "two"));
  EXPECT_THAT(breakText("extraordinary", space), ElementsAre("extraor", "dinary"));
  EXPECT_THAT(breakText("日本語日本語", space), ElementsAre("日本語", "日本語"));
  EXPECT_THAT(breakText("a日本語", space), ElementsAre("a日本語"));
}

TEST(Glyphs, LinesThatAreLeftOutShowAsAnEllipsis) {
  TextSpace const space{.width = 7, .lines = 2, .wraps = true};
  EXPECT_THAT(breakText("one two three four five", space), ElementsAre("one two", "three…"));
}

TEST(Glyphs, ALineEndIsASpaceWhereNothingWraps) {
  EXPECT_THAT(breakText("one\ntwo", {.width = 9, .lines = 3}), ElementsAre("one two"));
}

TEST(Glyphs, GlyphsKnowTheirPartOfTheText) {
  auto const lines = breakIntoLines({"ab", "c"}, {.width = 3});
  EXPECT_EQ(lines.front()[1].run, 0U);
  EXPECT_EQ(lines.front()[2].run, 1U);
}

TEST(Glyphs, ALongTextCostsNoMoreThanItsPlace) {
  std::string const text(20'000'000, 'x');
  EXPECT_THAT(breakText(text, {.width = 4, .lines = 2, .wraps = true}),
              ElementsAre("xxxx", "xxx…"));
}

}  // namespace
}  // namespace Zorv::Render
