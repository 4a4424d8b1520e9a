// Formulas that ask something of a whole column, in a document that is edited.

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_LiveView.h"
#include "ConditionalFormatters/LiveSheet.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ParseExpr.h"
#include "Utils/WorkBudget.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::LiveSheet;
using TestSupport::number;
using TestSupport::text;

/// The numbers 1 to 4,000 in column A.
class LiveFormulas : public testing::Test {
protected:
  static constexpr unsigned long rows = 4'000;

  LiveFormulas() {
    for (unsigned long row = 0; row < rows; ++row) {
      sheet.table.setValue(row, 0, number(static_cast<double>(row + 1)));
    }
  }

  void follow(std::string_view ranges, DOM::ConditionalFormatOperator condition) {
    sheet.addRule(ranges, std::move(condition));
    live.emplace(sheet.follow());
    view.emplace(*live);
    view->show({0, 0, rows + 100, 2});
    static_cast<void>(refresh());
    while (live->prepareSome(std::chrono::milliseconds(1))) {
    }
    // The next edit finds all areas that are asked in order.
    static_cast<void>(change(rows / 2, sheet.table.findCell(rows / 2, 0)->value));
  }

  /// Sets a value in column A, and gives what the view tells: "7+ 9-" for rows that begin and end
  /// to hold, "B7+" for column B.
  std::string change(unsigned long row, FormulaValue const& value) {
    sheet.table.setValue(row, 0, value);
    live->apply({ValuesChanged{&sheet.table, {{row, 0, row + 1, 1}}}});
    return refresh();
  }

  std::string refresh() {
    std::string told;
    WorkBudget budget({});
    view->refresh(
        [&](ResolvedCell const& cell) {
          told += told.empty() ? "" : " ";
          told += cell.cellInfo.getColIndex() == 1 ? "B" : "";
          told += std::to_string(cell.cellInfo.getRowIndex()) + (cell.style ? "+" : "-");
        },
        1, &budget);
    steps = budget.getSteps();
    return told;
  }

  /// Not all cells in sight were asked. The formula engine spends steps by the thousand.
  void expectFewSteps() const { EXPECT_LT(steps, 2 * rows); }

  LiveSheet sheet;
  std::optional<LiveResolver> live;
  std::optional<LiveView> view;
  std::size_t steps = 0;  ///< of the last refresh
};

TEST_F(LiveFormulas, AreAskedOfFewCellsAlone) {
  struct Edit {
    unsigned long row;
    double value;
    char const* told;
  };
  struct Case {
    char const* formula;
    std::vector<Edit> edits;
  };
  Case const cases[] = {
      // The mean moves from 2000.5 to 2005.5, and back.
      {"A1>AVERAGE($A$1:$A$4000)",
       {{3'999, 24'000, "2000- 2001- 2002- 2003- 2004-"},
        {3'999, 4'000, "2000+ 2001+ 2002+ 2003+ 2004+"}}},
      {"AVERAGE($A:$A)<=A1", {{3'999, 12'000, "2000- 2001-"}}},
      {"A1>1000+AVERAGE($A:$A)/2", {{3'999, 24'000, "2000- 2001-"}}},
      {"A1=MAX($A:$A)", {{100, 7, ""}, {3'999, 8, "3998+ 3999-"}, {100, 5'000, "100+ 3998-"}}},
      {"A1=MIN($A:$A)", {{100, 7, ""}, {0, 70, "0- 1+"}}},
      {"A1>=LARGE($A:$A,3)", {{0, 9'000, "0+ 3997-"}}},
      {"A1<=SMALL($A:$A,2)", {{1, 9'000, "1- 2+"}}},
      {"$A1>MEDIAN($A:$A)", {{0, 9'000, "0+ 2000-"}}},
      {"A1<PERCENTILE($A:$A,0.25)", {{0, 9'000, "0- 1000+"}}},
      {"A1>QUARTILE($A:$A,3)", {{0, 9'000, "0+ 3000-"}}},
      {"COUNTIF($A:$A,A1)>1", {{5, 101, "5+ 100+"}, {5, 6, "5- 100-"}}},
      {"COUNTIF($A$1:$A$4000,A1)=1", {{5, 101, "5- 100-"}}},
      {"COUNTIF($A:$A,\">3000\")>1000", {{5, 7, ""}}},
  };
  for (Case const& each : cases) {
    SCOPED_TRACE(each.formula);
    sheet.table.setConditionalFormats({});
    for (unsigned long row = 0; row < rows; ++row) {
      sheet.table.setValue(row, 0, number(static_cast<double>(row + 1)));
    }
    follow("A1:A4000", LiveSheet::isTrue(each.formula));
    for (Edit const& edit : each.edits) {
      EXPECT_EQ(change(edit.row, number(edit.value)), edit.told) << edit.value;
      expectFewSteps();
    }
  }
}

TEST_F(LiveFormulas, AreAskedOfPositionsWithoutACellWhereThatMatters) {
  sheet.table.removeCell(2'001, 0);
  follow("A1:A4100", LiveSheet::isTrue("A1>AVERAGE($A$1:$A$4000)"));
  EXPECT_EQ(change(3'999, number(23'995)), "2000- 2002- 2003- 2004-");
  sheet.table.setConditionalFormats({});
  follow("A1:A4100", LiveSheet::isTrue("COUNTIF($A:$A,A1)>1"));
  EXPECT_EQ(change(5, number(101)), "5+ 100+");
}

TEST_F(LiveFormulas, AreAskedOfNumbersThatAreEqualButForTheirLastBits) {
  // The mean moves from 2000.5 to 2005.5. Comparisons take these numbers for the old and the new.
  sheet.table.setValue(4'050, 0, number(std::nextafter(2000.5, 0)));
  sheet.table.setValue(4'051, 0, number(std::nextafter(2005.5, 3'000)));
  follow("A1:A4100", LiveSheet::isTrue("A1=AVERAGE($A$1:$A$4000)"));
  EXPECT_EQ(change(3'999, number(24'000)), "4050- 4051+");
  expectFewSteps();
}

TEST_F(LiveFormulas, OfManyRulesAreAskedOfTheCellsOfAllOfThem) {
  // The mean moves from 2000.5 to 2005.5.
  sheet.addRule("A1:A4000", LiveSheet::isTrue("A1=AVERAGE($A:$A)+999.5"));
  sheet.addRule("A1:A4000", LiveSheet::isTrue("A1=AVERAGE($A:$A)-0.5"));
  follow("A1:A4000", LiveSheet::isTrue("A1=AVERAGE($A:$A)/2+1000.75"));
  EXPECT_EQ(change(3'999, number(24'000)), "1999- 2000- 2004+ 2999- 3004+");
  expectFewSteps();
}

TEST_F(LiveFormulas, ThatCellsAreComparedWithAreAskedOfTheCellsBetween) {
  using Unary = DOM::UnaryConditionalFormatType;
  follow("A1:A4000", DOM::UnaryConditionalFormatOperator(
                         Unary::Greater, Formulas::parseExpr("AVERAGE($A$1:$A$4000)")));
  EXPECT_EQ(change(3'999, number(24'000)), "2000- 2001- 2002- 2003- 2004-");
  expectFewSteps();
}

TEST_F(LiveFormulas, ThatAreBoundsAreAskedOfTheCellsBetween) {
  follow("A1:A4000", DOM::BinaryConditionalFormatOperator(DOM::BinaryConditionalFormatType::Between,
                                                          Formulas::parseExpr("LARGE($A:$A,3)"),
                                                          Formulas::parseExpr("LARGE($A:$A,2)")));
  EXPECT_EQ(change(0, number(9'000)), "3997- 3999+");
  expectFewSteps();
}

TEST_F(LiveFormulas, SeeEmptyCellsAsZero) {
  sheet.table.setValue(0, 0, number(-20'000'000));
  follow("A1:A4002", LiveSheet::isTrue("A1<AVERAGE($A$1:$A$4000)"));
  // The mean moves from below zero to above; the last two places have no cell.
  std::string const told = change(0, number(1));
  EXPECT_NE(told.find("4000+ 4001+"), std::string::npos) << told.substr(0, 60);

  sheet.table.setConditionalFormats({});
  follow("A1:A4002", LiveSheet::isTrue("COUNTIF($A$1:$A$4000,A1)>0"));
  EXPECT_EQ(change(7, number(0)), "4000+ 4001+");
}

TEST_F(LiveFormulas, SeeTextsThatAreMoreThanValuesAsCriteria) {
  sheet.table.setValue(20, 0, text(">3999"));
  sheet.table.setValue(21, 0, text("Some*"));
  sheet.table.setValue(22, 0, text("sometimes"));
  follow("A1:A4000", LiveSheet::isTrue("COUNTIF($A:$A,A1)>2"));
  EXPECT_EQ(change(5, number(4'000)), "");
  EXPECT_EQ(change(6, number(4'000)), "5+ 6+ 20+ 3999+");
}

TEST_F(LiveFormulas, CountTextsThatAreEqualForCriteria) {
  sheet.table.setValue(30, 0, text("Total of the sums of all months and of all the years"));
  follow("A1:A4000", LiveSheet::isTrue("COUNTIF($A:$A,A1)>1"));
  EXPECT_EQ(change(31, text("total of the sums of all months and of all the YEARS")), "30+ 31+");
  EXPECT_EQ(change(32, text("TOTAL of the sums of all months and of all the years")), "32+");
  EXPECT_EQ(change(30, number(-1)), "30-");
  EXPECT_EQ(change(31, number(-2)), "31- 32-");
  expectFewSteps();
  EXPECT_EQ(change(33, text("2001.0")), "33+ 2000+") << "it reads as the number of row 2000";
  EXPECT_EQ(change(2'000, text("2001")), "");
  EXPECT_EQ(change(33, number(-3)), "33- 2000-");
  expectFewSteps();
}

TEST_F(LiveFormulas, CountTextsOfVeryManyLetterCases) {
  constexpr unsigned long count = 1'024;
  for (unsigned long row = 0; row < count; ++row) {
    std::string letters = "abcdefghij";
    for (std::size_t index = 0; index < letters.size(); ++index) {
      letters[index] = static_cast<char>(letters[index] - (row >> index & 1U ? 'a' - 'A' : 0));
    }
    sheet.table.setValue(row, 0, text(letters));
  }
  follow("A1:A4000", LiveSheet::isTrue("COUNTIF($A:$A,A1)=1024"));
  EXPECT_EQ(change(1'024, number(-1)), "");
  std::string const told = change(1'000, number(-2));
  EXPECT_EQ(std::ranges::count(told, '-'), std::ptrdiff_t{count});
}

TEST_F(LiveFormulas, OfOtherColumnsAreAskedWhereverTheyMayHoldOtherwise) {
  follow("A1:B4000", LiveSheet::isTrue("$A1>AVERAGE($A$1:$A$4000)"));
  EXPECT_EQ(change(3'999, number(12'000)), "2000- B2000- 2001- B2001-");
}

TEST_F(LiveFormulas, ThatAreTheSameForAllCellsAreAskedOfAllOfThem) {
  follow("B1:B2", LiveSheet::isTrue("SUM($A:$A)>8002000"));
  EXPECT_EQ(change(0, number(2)), "B0+ B1+");
  EXPECT_EQ(change(0, number(3)), "");
  EXPECT_EQ(change(0, number(1)), "B0- B1-");
}

TEST_F(LiveFormulas, SeeAChangeThatIsTooLargeToFollow) {
  follow("A1:A4000", LiveSheet::isTrue("A1=MAX($A:$A)"));
  for (unsigned long row = 0; row < rows; ++row) {
    sheet.table.setValue(row, 0, number(static_cast<double>(rows - row)));
  }
  live->apply({ValuesChanged{&sheet.table, {{0, 0, 200'000, 1}}}});
  EXPECT_EQ(refresh(), "0+ 3999-");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
