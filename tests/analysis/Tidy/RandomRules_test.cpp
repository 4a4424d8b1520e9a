// Random rule sets, tidied: no cell may look different, whatever the rules are. The comparison here
// visits every position by itself, through another road than the one that writeTidied() takes.
#include <random>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "analysis/Tidy/TidyFile.h"
#include "workbook/DocumentValueProvider.h"
#include "workbook/WorkbookBuilder.h"

namespace Zorv::Analysis {
namespace {

namespace CF = ConditionalFormatters;

constexpr unsigned long rowCount = 12;
constexpr unsigned long columnCount = 6;

/// Random workbooks of one small sheet: few values, few conditions, few formats, many fragments.
class BookMaker {
public:
  explicit BookMaker(unsigned seed) : _random(seed) {}

  std::string make() {
    std::string formats;
    auto const count = 4 + pick(14);
    for (unsigned long rule = 0; rule < count; ++rule) {
      formats += "<conditionalFormatting sqref=\"" + makeRanges() + "\">";
      for (auto together = 1 + pick(10) / 8; together > 0; --together) {
        formats += makeRule();
      }
      formats += "</conditionalFormatting>";
    }
    return TestSupport::WorkbookBuilder()
        .setStyles(styles)
        .setSheet(makeRows(), formats)
        .makeBytes();
  }

private:
  static constexpr char const* styles =
      R"(<dxfs count="5"><dxf><fill><patternFill><bgColor rgb="FFFF0000"/></patternFill></fill></dxf>)"
      R"(<dxf><font><b/></font></dxf><dxf><fill><patternFill><bgColor rgb="FFFF0000"/></patternFill>)"
      R"(</fill></dxf><dxf><fill><patternFill><bgColor rgb="FF00FF00"/></patternFill></fill></dxf>)"
      R"(<dxf><font><b val="0"/><color rgb="FF0000FF"/></font></dxf></dxfs>)";

  unsigned long pick(unsigned long end) { return _random() % end; }

  std::string makeRanges() {
    std::vector<TableRange> ranges;
    for (auto count = 1 + pick(8) / 6; count > 0; --count) {
      auto const row = pick(rowCount);
      auto const column = pick(columnCount);
      ranges.push_back({row, column, std::min(rowCount, row + 1 + pick(6)),
                        std::min(columnCount, column + 1 + pick(2))});
    }
    _base = ranges.front();
    for (auto const& range : ranges) {
      _base.firstRow = std::min(_base.firstRow, range.firstRow);
      _base.firstColumn = std::min(_base.firstColumn, range.firstColumn);
    }
    return DOM::A1Notation::toAddress(ranges);
  }

  /// The address of the cell that the rule's formulas are relative to, moved; now and then the
  /// formula is one that rules with other bases have as a text.
  std::string relative(unsigned long rows, unsigned long columns) {
    bool const isText = pick(6) == 0;
    return DOM::A1Notation::toAddress(
        CellIndex(RowIndex((isText ? 0 : _base.firstRow) + rows),
                  ColumnIndex((isText ? 0 : _base.firstColumn) + columns)));
  }

  std::string makeRule() {
    std::string const common = " priority=\"" + std::to_string(1 + pick(40)) + "\" dxfId=\"" +
                               std::to_string(pick(5)) + "\"" +
                               (pick(7) == 0 ? " stopIfTrue=\"1\">" : ">");
    switch (pick(6)) {
      case 0:
        return "<cfRule type=\"cellIs\" operator=\"greaterThan\"" + common +
               "<formula>2</formula></cfRule>";
      case 1:
        return "<cfRule type=\"cellIs\" operator=\"equal\"" + common + "<formula>" +
               relative(0, 1) + "</formula></cfRule>";
      case 2:
        return "<cfRule type=\"expression\"" + common + "<formula>" + relative(0, 0) + "+" +
               relative(1, 0) + "&gt;4</formula></cfRule>";
      case 3:
        return "<cfRule type=\"expression\"" + common + "<formula>$A" +
               std::to_string(_base.firstRow + 1) + "=1</formula></cfRule>";
      case 4:
        return "<cfRule type=\"top10\" rank=\"3\"" + common + "</cfRule>";
      default:
        return "<cfRule type=\"duplicateValues\"" + common + "</cfRule>";
    }
  }

  std::string makeRows() {
    std::string rows;
    for (unsigned long row = 0; row < rowCount; ++row) {
      rows += "<row r=\"" + std::to_string(row + 1) + "\">";
      for (unsigned long column = 0; column < columnCount; ++column) {
        if (pick(4) != 0) {
          rows += "<c r=\"" +
                  DOM::A1Notation::toAddress(CellIndex(RowIndex(row), ColumnIndex(column))) +
                  "\"><v>" + std::to_string(pick(5)) + "</v></c>";
        }
      }
      rows += "</row>";
    }
    return rows;
  }

  std::mt19937 _random;
  TableRange _base;
};

/// The style of a cell by the plainest road: one cell at a time, nothing prepared.
DOM::CellStyle lookUp(Workbook::Document const& document,
                      CF::ConditionalFormattingPropsCalculator const& calculator, unsigned long row,
                      unsigned long column) {
  auto const style = calculator.resolve(document.getStyles(),
                                        document.getSheets()[0].table->getCellInfo(row, column));
  return style ? style->get() : DOM::CellStyle();
}

CF::ConditionalFormattingPropsCalculator makeCalculator(Workbook::Document const& document) {
  return {std::make_unique<Workbook::DocumentValueProvider>(document, "en-US", DOM::TimeZone())};
}

TEST(RandomRules, LookTheSameAfterTidying) {
  std::size_t rulesBefore = 0;
  std::size_t rulesAfter = 0;
  for (unsigned seed = 1; seed <= 150; ++seed) {
    auto const file = TestSupport::tidyBytes(BookMaker(seed).make());
    rulesBefore += file.before.getRules().size();
    rulesAfter += file.after.getRules().size();
    auto const before = makeCalculator(file.before);
    auto const after = makeCalculator(file.after);
    for (unsigned long row = 0; row < rowCount + 2; ++row) {
      for (unsigned long column = 0; column < columnCount + 2; ++column) {
        ASSERT_EQ(lookUp(file.before, before, row, column), lookUp(file.after, after, row, column))
            << "seed " << seed << ", row " << row << ", column " << column << ", "
            << TestSupport::describe(file.plan);
      }
    }
  }
  // Without this the test would be content with a plan that never changes anything.
  EXPECT_LT(rulesAfter + rulesAfter / 20, rulesBefore);
}

TEST(RandomRules, AreLeftAloneOnceTheyAreTidy) {
  for (unsigned seed = 1; seed <= 40; ++seed) {
    auto const file = TestSupport::tidyBytes(BookMaker(seed).make());
    auto const again = TestSupport::tidyBytes(TestSupport::makeArchive(file.partsAfter));
    EXPECT_EQ(TestSupport::describe(again.plan), "") << "seed " << seed;
  }
}

}  // namespace
}  // namespace Zorv::Analysis
