#include "tool/Text/TextTable.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

class TextTableTest : public testing::Test {
protected:
  /// Text printed so far.
  std::string printed() {
    _buffer.flush();
    return _out.str();
  }

  std::ostringstream _out;
  OutputBuffer _buffer{_out};
};

TEST_F(TextTableTest, ColumnsAreAsWideAsTheirWidestText) {
  TextTable table({{"CELL", 20}, {"STYLE", 20}}, _buffer);
  table.addRow({"A1", "bold"});
  table.addRow({"XFD1048576", "fill #FFC7CE"});
  table.finish();
  EXPECT_EQ(printed(),
            "CELL        STYLE\n"
            "A1          bold\n"
            "XFD1048576  fill #FFC7CE\n");
}

TEST_F(TextTableTest, WidthIsThatOnScreen) {
  TextTable table({{"A", 20}, {"B", 20}}, _buffer);
  table.addRow({"\xE8\xA1\xA8", "x"});
  table.finish();
  EXPECT_EQ(printed(), "A   B\n\xE8\xA1\xA8  x\n");
}

TEST_F(TextTableTest, LongTextsAreShortened) {
  TextTable table({{"A", 6}, {"B", 5}}, _buffer);
  table.addRow({"abcdefg", "x\ny"});
  table.addRow({"a", "123456"});
  table.finish();
  EXPECT_EQ(printed(),
            "A       B\n"
            "abc...  x y\n"
            "a       12...\n");
}

TEST_F(TextTableTest, RowsAfterTheFirstThousandAreWrittenAtOnceAndKeepTheWidths) {
  TextTable table({{"A", 20}, {"B", 20}}, _buffer);
  EXPECT_EQ(printed(), "");
  for (int row = 1; row < 1'000; ++row) {
    table.addRow({"abc", "x"});
  }
  auto const first = printed();
  EXPECT_EQ(first.substr(0, 14), "A    B\nabc  x\n");
  table.addRow({"a\x1B", "y"});
  EXPECT_EQ(printed().substr(first.size()), "a    y\n");
  table.addRow({"abcdef", "z"});
  table.finish();
  EXPECT_EQ(printed().substr(first.size()), "a    y\nabcdef  z\n");
}

TEST_F(TextTableTest, OnATerminalTheWidestColumnsAreNarrowed) {
  TextTable table({{"CELL", 20}, {"STYLE", 40}, {"RULES", 40}}, _buffer, {.width = 36});
  table.addRow({"A1", "fill #FFC7CE, text #9C0006", "9: formula $D4<TODAY() on A4:G15"});
  table.finish();
  EXPECT_EQ(printed(),
            "CELL  STYLE           RULES\n"
            "A1    fill #FFC7C...  9: formula ...\n");
}

TEST_F(TextTableTest, OnATerminalLaterRowsKeepToItsWidth) {
  TextTable table({{"A", 20}, {"B", 20}}, _buffer, {.width = 12});
  for (int row = 1; row < 1'000; ++row) {
    table.addRow({"abcd", "x"});
  }
  auto const first = printed();
  table.addRow({"abcdef", "123456789"});
  table.finish();
  EXPECT_EQ(printed().substr(first.size()), "a...  123...\n");
}

TEST_F(TextTableTest, SwatchesStandBeforeTheirColumn) {
  TextTable table({{"A", 20}, {"B", 20, true}, {"C", 20}}, _buffer,
                  {.width = std::nullopt, .colours = Render::ColourDepth::Direct});
  table.addRow({"1", "red", "x"}, DOM::Colour{.red = 255});
  table.addRow({"2", "none", "y"});
  table.finish();
  EXPECT_EQ(printed(),
            "A     B     C\n"
            "1  \x1B[0;48;2;255;0;0m  \x1B[0m red   x\n"
            "2     none  y\n");
}

TEST_F(TextTableTest, WithoutColoursThereAreNoSwatches) {
  TextTable table({{"A", 20, true}, {"B", 20}}, _buffer);
  table.addRow({"red", "x"}, DOM::Colour{.red = 255});
  table.finish();
  EXPECT_EQ(printed(), "A    B\nred  x\n");
}

TEST_F(TextTableTest, WithoutRowsThereAreHeadings) {
  TextTable table({{"A", 20}, {"B", 20}}, _buffer);
  table.finish();
  EXPECT_EQ(printed(), "A  B\n");
}

}  // namespace
}  // namespace Zorv::Tool
