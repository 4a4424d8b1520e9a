#include "tool/Text/TextTable.h"

#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Tool {
namespace {

class TextTableTest : public testing::Test {
protected:
  /// What was printed so far.
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

TEST_F(TextTableTest, WithoutRowsThereAreHeadings) {
  TextTable table({{"A", 20}, {"B", 20}}, _buffer);
  table.finish();
  EXPECT_EQ(printed(), "A  B\n");
}

}  // namespace
}  // namespace Zorv::Tool
