#include "tool/Commands/CoveredAreas.h"

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "support/RuledDocument.h"

namespace Zorv::Tool {
namespace {

using ConditionalFormatters::TablePass;

class CoveredAreasTest : public testing::Test {
protected:
  CoveredAreasTest() { fill(9, 2); }

  /// Gives the sheet a cell.
  void fill(unsigned long row, unsigned long column) {
    _ruled.document.getSheets()[0].table->setValue(row, column, FormulaModel::FormulaBoolean{true});
  }

  /// The areas that a command looks at for rules with these ranges.
  std::string areasOf(std::vector<std::string> const& ranges, unsigned long margin = 0) {
    for (auto const& range : ranges) {
      _ruled.addRule(range);
    }
    auto const selection = _ruled.select();
    CoveredAreas areas(selection, 0, margin);
    _pass = areas.makePass(selection.getResolvedRules(0));
    Report report(_messages, selection);
    areas.sayLeftOut(report);
    _clippedSheets = report.getClippedSheets().size();
    return DOM::A1Notation::toAddress(_pass.areas);
  }

  TestSupport::RuledDocument _ruled;
  TablePass _pass;
  std::ostringstream _messages;
  std::size_t _clippedSheets = 0;
};

TEST_F(CoveredAreasTest, BoundedRangesAreWholeWhateverTheirCells) {
  EXPECT_EQ(areasOf({"A1:B3", "Z90:AA99 E5", "XFD1048576"}), "A1:B3 Z90:AA99 E5 XFD1048576");
  EXPECT_EQ(_pass.positions, TablePass::Positions::Areas);
  EXPECT_EQ(_messages.str(), "");
  EXPECT_EQ(_clippedSheets, 0U);
}

TEST_F(CoveredAreasTest, WholeRowsAndColumnsAreClippedToTheUsedRange) {
  EXPECT_EQ(areasOf({"A:B", "10:12", "B2:B1048576", "A1"}), "C10 A1");
  EXPECT_EQ(_messages.str(),
            "book.xlsx: Sheet1: ranges to the end of the sheet, and very large ones, are looked at "
            "in C10 alone (rules 0 to 2; --range names other cells)\n");
  EXPECT_EQ(_clippedSheets, 1U);
}

TEST_F(CoveredAreasTest, AMarginBelongsToTheUsedRange) {
  EXPECT_EQ(areasOf({"A:D"}, 10), "C10:D20");
}

TEST_F(CoveredAreasTest, VeryLargeRangesAreClippedToo) {
  EXPECT_EQ(areasOf({"A1:J500001", "A1:B2"}), "C10 A1:B2");
}

TEST_F(CoveredAreasTest, AsManyPositionsAsThatAreNotVeryLarge) {
  EXPECT_EQ(areasOf({"A1:J500000"}), "A1:J500000");
}

TEST_F(CoveredAreasTest, ManyRangesAreClippedTogether) {
  EXPECT_EQ(areasOf({"A1:J300000", "K1:T300000", "C9:C10"}), "C10 C10");
  EXPECT_EQ(_pass.positions, TablePass::Positions::Areas);
}

TEST_F(CoveredAreasTest, RangesThatOverlapCountOnce) {
  EXPECT_EQ(areasOf({"A1:J300000", "A1:J300000"}), "A1:J300000 A1:J300000");
}

TEST_F(CoveredAreasTest, WhereThereAreStillTooManyOnlyCellsAreLookedAt) {
  fill(1'048'575, 16'383);
  areasOf({"A:XFD"});
  EXPECT_EQ(_pass.positions, TablePass::Positions::Existing);
  EXPECT_EQ(_messages.str(),
            "book.xlsx: Sheet1: the rules cover 17177624594 positions; only those that hold a cell "
            "are looked at (--range names fewer)\n");
}

TEST_F(CoveredAreasTest, TheRangeOfTheOptionsNamesOtherCells) {
  _ruled.options.ranges = {{std::nullopt, *DOM::A1Notation::parseRange("A1:B500")}};
  EXPECT_EQ(areasOf({"A:A", "D4"}), "A1:A500");
  EXPECT_EQ(_messages.str(), "");
}

TEST_F(CoveredAreasTest, AMessageNamesEachRuleOnce) {
  for (int i = 0; i < 2; ++i) {
    _ruled.addRule("A:A");
  }
  auto const selection = _ruled.select();
  CoveredAreas areas(selection, 0, 0);
  auto const rules = selection.getResolvedRules(0);
  for (auto const* rule : rules) {
    static_cast<void>(areas.makePass({&rule, 1}));
    static_cast<void>(areas.makePass({&rule, 1}));
  }
  Report report(_messages, selection);
  areas.sayLeftOut(report);
  EXPECT_NE(_messages.str().find("(rules 0 to 1;"), std::string::npos) << _messages.str();
}

}  // namespace
}  // namespace Zorv::Tool
