#include "ConditionalFormatters/Formats/CndFrmt_StyleRuns.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "DOM/CellStyle.h"

namespace Zorv::ConditionalFormatters {
namespace {

/// Styles by letter; a blank is no style.
class StyleRunsTest : public testing::Test {
protected:
  StyleRunsTest() {
    for (std::size_t letter = 0; letter < std::size(_styles) - 1; ++letter) {
      DOM::CellStyle style;
      style.setNoteUUID(UUID::generate());
      _styles[letter] = _factory.create(style);
    }
  }

  [[nodiscard]] DOM::SharedCellStylePtr const& styleOf(char letter) const {
    return letter == ' ' ? _styles[3] : _styles[letter - 'a'];
  }

  /// The runs of rows that are cut into blocks of so many rows: `a 0,0-2,1` for style a in the
  /// first two rows of the first column.
  [[nodiscard]] std::vector<std::string> runsOf(std::vector<std::string> const& rows,
                                                unsigned long blockHeight) const {
    TableRunsBuilder table;
    for (unsigned long first = 0; first < rows.size(); first += blockHeight) {
      unsigned long const end = std::min<unsigned long>(rows.size(), first + blockHeight);
      BlockRunsBuilder block;
      for (unsigned long row = first; row < end; ++row) {
        for (unsigned long column = 0; column < rows[row].size(); ++column) {
          block.addCell(row, column, styleOf(rows[row][column]));
        }
      }
      table.addBlock({first, 0, end, 9}, block.finalize());
    }
    std::vector<std::string> texts;
    for (StyleRun const& run : table.finalize()) {
      std::string text(1,
                       static_cast<char>('a' + (std::ranges::find(_styles, run.style) - _styles)));
      auto const& [firstRow, firstColumn, endRow, endColumn] = run.range;
      texts.push_back(text + " " + std::to_string(firstRow) + "," + std::to_string(firstColumn) +
                      "-" + std::to_string(endRow) + "," + std::to_string(endColumn));
    }
    return texts;
  }

  DOM::SharedObjectFactory _factory;
  DOM::SharedCellStylePtr _styles[4];
};

TEST_F(StyleRunsTest, ARunIsAsWideAsItsStyleAndAsHighAsRowsRepeatIt) {
  std::vector<std::string> const rows{"aab", "aab", "aaa", " bb", "bbb"};
  std::vector<std::string> const runs{"a 0,0-2,2", "b 0,2-2,3", "a 2,0-3,3", "b 3,1-4,3",
                                      "b 4,0-5,3"};
  for (unsigned long const blockHeight : {1UL, 2UL, 3UL, 5UL}) {
    EXPECT_EQ(runsOf(rows, blockHeight), runs) << blockHeight;
  }
}

TEST_F(StyleRunsTest, ARowWithoutTheStyleEndsARun) {
  std::vector<std::string> const runs{"c 0,0-1,1", "c 2,0-4,1"};
  for (unsigned long const blockHeight : {1UL, 2UL, 4UL}) {
    EXPECT_EQ(runsOf({"c", " ", "c", "c"}, blockHeight), runs) << blockHeight;
  }
}

TEST_F(StyleRunsTest, NeighboursOfOneStyleButAnotherWidthAreRunsOfTheirOwn) {
  std::vector<std::string> const runs{"a 0,0-1,2", "a 1,0-2,1"};
  EXPECT_EQ(runsOf({"aa", "a "}, 1), runs);
  EXPECT_EQ(runsOf({"aa", "a "}, 2), runs);
}

TEST_F(StyleRunsTest, PositionsThatAreLeftOutPartRuns) {
  BlockRunsBuilder builder;
  for (auto const& [row, column] : {std::pair(3UL, 1UL), {3UL, 2UL}, {3UL, 4UL}, {5UL, 1UL}}) {
    builder.addCell(row, column, styleOf('a'));
  }
  auto const runs = builder.finalize();
  ASSERT_EQ(runs.size(), 3U);
  EXPECT_EQ(runs[0].range, (TableRange{3, 1, 4, 3}));
  EXPECT_EQ(runs[1].range, (TableRange{3, 4, 4, 5}));
  EXPECT_EQ(runs[2].range, (TableRange{5, 1, 6, 2}));
}

TEST_F(StyleRunsTest, ABuilderBeginsAnewWhenItHasGivenItsRuns) {
  BlockRunsBuilder builder;
  for (unsigned long row = 0; row < 3; ++row) {
    // Each run would continue the one above.
    builder.addCell(row, 7, styleOf('b'));
    builder.addCell(row, 8, styleOf('a'));
    auto const runs = builder.finalize();
    ASSERT_EQ(runs.size(), 2U);
    EXPECT_EQ(runs[0].range, (TableRange{row, 7, row + 1, 8}));
    EXPECT_EQ(runs[1].range, (TableRange{row, 8, row + 1, 9}));
    EXPECT_TRUE(builder.finalize().empty());
  }
}

TEST_F(StyleRunsTest, OfNothingAreNone) { EXPECT_TRUE(runsOf({"  ", "  "}, 1).empty()); }

}  // namespace
}  // namespace Zorv::ConditionalFormatters
