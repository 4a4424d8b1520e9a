#include "tool/Text/TextTable.h"

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

TEST(TextTable, ColumnsAreAsWideAsTheirWidestText) {
  TextTable table({"CELL", "STYLE"});
  table.addRow({"A1", "bold"});
  table.addRow({"XFD1048576", "fill #FFC7CE"});
  EXPECT_EQ(table.format(),
            "CELL        STYLE\n"
            "A1          bold\n"
            "XFD1048576  fill #FFC7CE\n");
}

TEST(TextTable, WidthIsThatOnScreen) {
  EXPECT_EQ(displayWidth("abc"), 3U);
  EXPECT_EQ(displayWidth("\xC3\xA4"), 1U);                  // a with diaeresis
  EXPECT_EQ(displayWidth("a\xCC\x88"), 1U);                 // the same of two characters
  EXPECT_EQ(displayWidth("\xE8\xA1\xA8\xE6\xA0\xBC"), 4U);  // two Chinese characters
  TextTable table({"A", "B"});
  table.addRow({"\xE8\xA1\xA8", "x"});
  EXPECT_EQ(table.format(), "A   B\n\xE8\xA1\xA8  x\n");
}

TEST(TextTable, NothingInATextMovesTheCursor) {
  EXPECT_EQ(toPrintable("a\nb\tc\x1B[31m"), "a b c [31m");
  EXPECT_EQ(toPrintable("\xE2\x80\xAE"
                        "abc"),
            " abc");  // right-to-left override
  EXPECT_EQ(toPrintable("a\xFF"), "a\xEF\xBF\xBD");
  EXPECT_EQ(toPrintable("\xC2\x9B"
                        "2J"),
            " 2J");  // a control character beyond ASCII
}

TEST(TextTable, CutsByWidthAndNotInsideACharacter) {
  EXPECT_EQ(cutToWidth("abcdef", 3), "abc");
  EXPECT_EQ(cutToWidth("abc", 3), "abc");
  EXPECT_EQ(cutToWidth("\xE8\xA1\xA8\xE6\xA0\xBC", 3), "\xE8\xA1\xA8");
}

TEST(TextTable, IsEmptyUntilARowIsAdded) {
  TextTable table({"A"});
  EXPECT_TRUE(table.isEmpty());
  table.addRow({"1"});
  EXPECT_FALSE(table.isEmpty());
}

}  // namespace
}  // namespace Zorv::Tool
