#include "ConditionalFormatters/CndFrmt_LiveView.h"

#include <chrono>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/LiveSheet.h"
#include "DOM/ConditionalFormatOperator.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/PinnedMoment.h"
#include "Utils/WorkBudget.h"
#include "support/ForwardingValueContextProvider.h"
#include "support/PlainHost.h"
#include "support/RunningClock.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::LiveSheet;
using TestSupport::number;

/// The rows of the cells that a refresh tells, and how they look: "1+ 4-" for a fill in row 1 and
/// none any more in row 4, "!" for a failure.
std::string refresh(LiveView& view) {
  std::string told;
  view.refresh([&](ResolvedCell const& cell) {
    told += told.empty() ? "" : " ";
    told += std::to_string(cell.cellInfo.getRowIndex());
    told += cell.failure != nullptr ? "!" : cell.style ? "+" : "-";
  });
  return told;
}

constexpr TableRange firstRows{0, 0, 10, 3};

class LiveViewTest : public testing::Test {
protected:
  LiveViewTest() { sheet.setColumn(0, {1, 9, 1, 9, 1, 1, 1, 9, 1, 1, 9, 9}); }

  /// Sets a number in column A, and tells it.
  void change(unsigned long row, double value) {
    sheet.table.setValue(row, 0, number(value));
    live().apply({ValuesChanged{&sheet.table, {{row, 0, row + 1, 1}}}});
  }

  LiveResolver& live() {
    if (!_live) {
      _live.emplace(sheet.follow());
    }
    return *_live;
  }

  LiveSheet sheet;

private:
  std::optional<LiveResolver> _live;
};

TEST_F(LiveViewTest, TellsStyledCellsFirstAndThenOnlyDifferences) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView view(live());
  EXPECT_EQ(refresh(view), "");
  view.show(firstRows);
  EXPECT_EQ(refresh(view), "1+ 3+ 7+");
  EXPECT_EQ(refresh(view), "");
  change(2, 8);
  change(3, 2);
  change(7, 7);
  EXPECT_EQ(refresh(view), "2+ 3-");
}

TEST_F(LiveViewTest, TellsNoChangeThatWasTakenBack) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView view(live());
  view.show(firstRows);
  refresh(view);
  change(1, 2);
  change(1, 9);
  EXPECT_EQ(refresh(view), "");
}

TEST_F(LiveViewTest, KeepsWhatStaysInSight) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView view(live());
  view.show(firstRows);
  refresh(view);
  view.show({2, 0, 12, 3});
  EXPECT_EQ(refresh(view), "10+ 11+");
  view.show(firstRows);
  EXPECT_EQ(refresh(view), "1+");
}

TEST_F(LiveViewTest, TellsWhatCameIntoSightBetweenTwoRefreshes) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView view(live());
  view.show(firstRows);
  refresh(view);
  view.show({20, 0, 30, 3});
  view.show(firstRows);
  EXPECT_EQ(refresh(view), "1+ 3+ 7+");
}

TEST_F(LiveViewTest, TellsEverythingAgainAfterItForgot) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView view(live());
  view.show(firstRows);
  refresh(view);
  view.forget();
  EXPECT_EQ(refresh(view), "1+ 3+ 7+");
}

TEST_F(LiveViewTest, SeesEachChangeHoweverManyThereWere) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView view(live());
  view.show(firstRows);
  refresh(view);
  for (int edit = 0; edit < 200; ++edit) {
    change(static_cast<unsigned long>(edit % 3), edit == 197 ? 1 : 9);
  }
  EXPECT_EQ(refresh(view), "0+");
  change(1, 1);
  EXPECT_EQ(refresh(view), "1-");
}

TEST_F(LiveViewTest, ViewsOfOneResolverAreIndependent) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView one(live());
  LiveView two(live());
  one.show(firstRows);
  two.show({0, 0, 3, 1});
  refresh(one);
  change(1, 2);
  EXPECT_EQ(refresh(one), "1-");
  EXPECT_EQ(refresh(two), "");
}

TEST_F(LiveViewTest, FollowsADependentCellOfAnotherColumn) {
  sheet.addRule("C1:C12", LiveSheet::isTrue("$A1>5"));
  LiveView view(live());
  view.show(firstRows);
  EXPECT_EQ(refresh(view), "1+ 3+ 7+");
  change(0, 9);
  EXPECT_EQ(refresh(view), "0+");
}

TEST_F(LiveViewTest, TellsACellThatBeginsToFailAndOneThatStops) {
  sheet.addRule("A1:A3", LiveSheet::isTrue("IF(A1>5,LAMBDA(f,f(f))(LAMBDA(f,f(f))),FALSE)"));
  LiveView view(live());
  view.show(firstRows);
  EXPECT_EQ(refresh(view), "1!");
  EXPECT_EQ(refresh(view), "");
  change(1, 1);
  EXPECT_EQ(refresh(view), "1-");
}

TEST_F(LiveViewTest, FollowsTheDayWithoutBeingTold) {
  using OfficeUtils::PinnedMoment;
  constexpr double serialOf21November = 46347;
  sheet.setColumn(1, {serialOf21November, serialOf21November + 1});
  sheet.addRule("B1:B2", LiveSheet::isToday());
  auto const noon = TestSupport::noonOn21November();
  std::optional<PinnedMoment> now(std::in_place, noon);
  LiveView view(live());
  view.show(firstRows);
  EXPECT_EQ(refresh(view), "0+");
  EXPECT_EQ(live().nextChange(), noon + std::chrono::hours(12));
  now.reset();
  now.emplace(noon + std::chrono::hours(12));
  EXPECT_EQ(refresh(view), "0- 1+");
}

TEST_F(LiveViewTest, PinsNoMomentAroundItsVisitor) {
  sheet.addRule("B1:B2", LiveSheet::isToday());
  sheet.addRule("A1:A12", LiveSheet::isTrue("AND(A1>5,NOW()>0)"));
  LiveView view(live());
  view.show(firstRows);
  int visits = 0;
  view.refresh([&](ResolvedCell const& /*cell*/) {
    EXPECT_EQ(OfficeUtils::PinnedMoment::getCurrent(), nullptr);
    ++visits;
  });
  EXPECT_EQ(visits, 3);
}

TEST_F(LiveViewTest, VisitsCellsAgainAfterTheVisitorThrew) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveView view(live());
  view.show(firstRows);
  int visits = 0;
  EXPECT_THROW(view.refresh([&](ResolvedCell const& /*cell*/) {
    if (++visits == 2) {
      throw std::runtime_error("painting failed");
    }
  }),
               std::runtime_error);
  EXPECT_EQ(refresh(view), "3+ 7+");
}

TEST_F(LiveViewTest, AMeanThatMovesIsAskedOfTheCellsBetweenAlone) {
  constexpr unsigned long rows = 4'000;
  for (unsigned long row = 0; row < rows; ++row) {
    sheet.table.setValue(row, 0, number(static_cast<double>(row)));
  }
  sheet.addRule("A1:A4000", LiveSheet::isAboveAverage());
  LiveView view(live());
  view.show({0, 0, rows, 1});
  refresh(view);
  while (live().prepareSome(std::chrono::milliseconds(1))) {
  }
  change(3'999, 3'999 + 5 * rows);  // The mean moves from 1999.5 to 2004.5.
  WorkBudget budget({});
  std::string told;
  view.refresh(
      [&](ResolvedCell const& cell) {
        told += std::to_string(cell.cellInfo.getRowIndex());
        told += cell.style ? "+ " : "- ";
      },
      1, &budget);
  EXPECT_EQ(told, "2000- 2001- 2002- 2003- 2004- ");
  EXPECT_LT(budget.getSteps(), rows / 2) << "not all cells in sight";
}

/// Throws for the cell A5 while it is told to.
class A5FailingProvider final : public TestSupport::ForwardingValueContextProvider {
public:
  A5FailingProvider(DOM::Table const& table, bool const& fails)
      : ForwardingValueContextProvider(
            std::make_unique<TestSupport::PlainValueContextProvider>(table)),
        _fails(fails) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    if (_fails && cellInfo.getRowIndex() == 4) {
      throw std::runtime_error("no value");
    }
    return ForwardingValueContextProvider::getCellValue(cellInfo);
  }

private:
  bool const& _fails;
};

TEST_F(LiveViewTest, ACellThatCannotBeReadFailsWhereAMeanMovesAndHidesNoOther) {
  bool fails = false;
  ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<A5FailingProvider>(sheet.table, fails));
  sheet.addRule("A1:A12", LiveSheet::isAboveAverage());
  LiveResolver resolver = calculator.follow(sheet.styles, sheet.table);
  LiveView view(resolver);
  view.show(firstRows);
  EXPECT_EQ(refresh(view), "1+ 3+ 7+");
  while (resolver.prepareSome(std::chrono::milliseconds(1))) {
  }
  fails = true;
  sheet.table.setValue(11, 0, number(129));  // The mean moves from 4.3 to 14.3.
  resolver.apply({ValuesChanged{&sheet.table, {{11, 0, 12, 1}}}});
  EXPECT_EQ(refresh(view), "1- 3- 4! 7-");
}

TEST_F(LiveViewTest, CellsAtTheOldAndTheNewMeanAreAsked) {
  using Average = DOM::AboveAverageConditionalFormatType;
  struct Case {
    Average type;
    std::string up;    ///< what is told when the mean moves from 4 to 5
    std::string down;  ///< and back
  };
  Case const cases[] = {{Average::Above, "0+ 2-", "0- 2+"},
                        {Average::EqualOrAbove, "0+ 1-", "0- 1+"},
                        {Average::Below, "0- 1+", "0+ 1-"},
                        {Average::EqualOrBelow, "0- 2+", "0+ 2-"}};
  for (Case const& each : cases) {
    LiveSheet averages;
    averages.setColumn(0, {2, 4, 5, 5});
    averages.addRule("A1:A4", DOM::AboveAverageConditionalFormatOperator(each.type));
    LiveResolver resolver = averages.follow();
    while (resolver.prepareSome(std::chrono::milliseconds(1))) {
    }
    LiveView view(resolver);
    view.show({0, 0, 3, 1});
    refresh(view);
    averages.setColumn(0, {6});
    resolver.apply({ValuesChanged{&averages.table, {{0, 0, 1, 1}}}});
    EXPECT_EQ(refresh(view), each.up);
    averages.setColumn(0, {2});
    resolver.apply({ValuesChanged{&averages.table, {{0, 0, 1, 1}}}});
    EXPECT_EQ(refresh(view), each.down);
  }
}

TEST_F(LiveViewTest, GoesOnWhereItsResolverIsMoved) {
  sheet.addRule("A1:A12", LiveSheet::isTrue("A1>5"));
  LiveResolver first = sheet.follow();
  LiveView view(first);
  view.show(firstRows);
  refresh(view);
  LiveResolver second = std::move(first);
  sheet.table.setValue(1, 0, number(2));
  second.apply({ValuesChanged{&sheet.table, {{1, 0, 2, 1}}}});
  EXPECT_EQ(refresh(view), "1-");
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
