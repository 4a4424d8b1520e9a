#include "tool/Output/ExplainLines.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

class ExplainLinesTest : public testing::Test {
protected:
  /// Text that `write(lines)` prints.
  template <class Write>
  std::string print(Terminal const& terminal, Write const& write) {
    std::ostringstream stream;
    OutputBuffer out(stream);
    ExplainLines lines(terminal, out);
    write(lines);
    out.flush();
    return stream.str();
  }

  static constexpr Terminal plain{.width = 50};
  static constexpr Terminal colourful{.width = 50, .colours = Render::ColourDepth::Direct};
  std::vector<Words::StylePhrase> phrases = {{"fillColour", "fill #FF0000", DOM::Colour{255, 0, 0}},
                                             {"bold", "bold", std::nullopt}};
};

TEST_F(ExplainLinesTest, LongLinesGoOnBetweenWords) {
  auto const text = print(plain, [](ExplainLines& lines) {
    lines.add(1, "one two three four five six seven eight nine ten eleven twelve thirteen");
  });
  EXPECT_EQ(text,
            "  one two three four five six seven eight nine ten\n"
            "      eleven twelve thirteen\n");
}

TEST_F(ExplainLinesTest, AWordThatIsTooLongIsBroken) {
  auto const text = print(plain, [](ExplainLines& lines) { lines.add(0, std::string(70, 'x')); });
  EXPECT_EQ(text, std::string(50, 'x') + "\n    " + std::string(20, 'x') + '\n');
}

TEST_F(ExplainLinesTest, WithoutATerminalALineHas80Columns) {
  auto const text =
      print(Terminal{}, [](ExplainLines& lines) { lines.add(0, std::string(90, 'x')); });
  EXPECT_EQ(text.find('\n'), 80U);
}

TEST_F(ExplainLinesTest, TextsAreMadePrintable) {
  auto const text = print(plain, [](ExplainLines& lines) {
    lines.add(0, "a\x1B[2J");
    lines.addHeading("b\n", "c\r");
    lines.addPair(0, "d\x07", 4, "e\x08");
  });
  EXPECT_EQ(text, "a [2J\nb : c \nd     e \n");
}

TEST_F(ExplainLinesTest, SwatchesShowOnATerminalWithColoursAlone) {
  auto const write = [&](ExplainLines& lines) { lines.addPhrases(1, "sets ", phrases, "!"); };
  EXPECT_EQ(print(plain, write), "  sets fill #FF0000, bold!\n");
  EXPECT_EQ(print(colourful, write), "  sets \x1B[0;48;2;255;0;0m  \x1B[0m fill #FF0000, bold!\n");
  EXPECT_EQ(print(plain, [](ExplainLines& lines) { lines.addPhrases(1, "sets ", {}, "!"); }), "");
}

TEST_F(ExplainLinesTest, RowsOfPhrasesAreAlignedWithAndWithoutSwatches) {
  auto const write = [&](ExplainLines& lines) {
    lines.addPhrase(0, phrases[0], 12, "by rule 1");
    lines.addPhrase(0, phrases[1], 12, "by rule 2");
  };
  EXPECT_EQ(print(plain, write), "fill #FF0000  by rule 1\nbold          by rule 2\n");
  EXPECT_EQ(print(colourful, write),
            "\x1B[0;48;2;255;0;0m  \x1B[0m fill #FF0000  by rule 1\n   bold          by rule 2\n");
}

TEST_F(ExplainLinesTest, TitlesAreColoured) {
  auto const write = [](ExplainLines& lines) {
    lines.addTitle("Rule 1 holds", "cell > 5", Words::Tone::Good);
  };
  EXPECT_EQ(print(plain, write), "Rule 1 holds: cell > 5\n");
  EXPECT_EQ(print(colourful, write), "\x1B[1;32mRule 1 holds\x1B[0m: cell > 5\n");
}

}  // namespace
}  // namespace Zorv::Tool
