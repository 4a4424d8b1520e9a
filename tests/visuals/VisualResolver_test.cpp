#include "visuals/VisualResolver.h"

#include <chrono>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <gtest/gtest.h>

#include "OfficeUtils/PinnedMoment.h"
#include "Utils/WorkBudget.h"
#include "visuals/VisualTable.h"

namespace Zorv::Visuals {
namespace {

using TestSupport::formulaThreshold;
using TestSupport::makeBar;
using TestSupport::makeIcons;
using TestSupport::makeScale;
using TestSupport::threshold;
using TestSupport::VisualTable;
using Kind = ThresholdKind;

class VisualResolverTest : public testing::Test {
protected:
  /// The share of the scale in percent, or -1 without a scale.
  int scaleAt(std::string const& cell) {
    auto const visuals = _table.resolve(cell);
    return visuals.scale ? visuals.scale->colour.red : -1;
  }
  /// The length of the bar, or -1 without a bar.
  double barAt(std::string const& cell) {
    auto const visuals = _table.resolve(cell);
    return visuals.bar ? visuals.bar->extent.to - visuals.bar->extent.from : -1;
  }

  VisualTable _table;
};

struct ThresholdCase {
  char const* name;
  Threshold low;
  Threshold high;
  int expected;  ///< for 20 of 10, 20, 20, 40, 110
};

class Thresholds : public testing::TestWithParam<ThresholdCase> {};

TEST_P(Thresholds, AreFoundByTheirKind) {
  VisualTable table;
  table.setColumn({10, 20, 20, 40, 110});
  table.set("C1", 60);
  table.addVisual("A1:A5", makeScale(GetParam().low, GetParam().high));
  EXPECT_EQ(table.resolve("A2").scale->colour.red, GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    VisualResolver, Thresholds,
    testing::Values(
        ThresholdCase{"MinMax", threshold(Kind::Min), threshold(Kind::Max), 10},
        ThresholdCase{"Number", threshold(Kind::Number, 0), threshold(Kind::Number, 80), 25},
        ThresholdCase{"Percent", threshold(Kind::Percent, 5), threshold(Kind::Percent, 25), 25},
        ThresholdCase{"Percentile", threshold(Kind::Percentile, 0), threshold(Kind::Percentile, 75),
                      33},
        ThresholdCase{"PercentileBetween", threshold(Kind::Percentile, 0),
                      threshold(Kind::Percentile, 62.5), 50},
        ThresholdCase{"Formula", formulaThreshold("$C$1-60"), formulaThreshold("MAX($A$1:$A$5)-30"),
                      25},
        ThresholdCase{"FormulaOfAnEmptyCell", formulaThreshold("$D$9"), threshold(Kind::Number, 80),
                      25},
        ThresholdCase{"RelativeToTheTopLeftCell", formulaThreshold("A1"),
                      threshold(Kind::Number, 60), 20},
        ThresholdCase{"NumberByFormula", formulaThreshold("0", Kind::Number),
                      formulaThreshold("$C$1", Kind::Number), 33},
        ThresholdCase{"PercentByFormula", threshold(Kind::Min),
                      formulaThreshold("$C$1-40", Kind::Percent), 50},
        ThresholdCase{"Auto", threshold(Kind::AutoMin), threshold(Kind::AutoMax), 18},
        ThresholdCase{"Reversed", threshold(Kind::Number, 30), threshold(Kind::Number, 0), 0},
        ThresholdCase{"AboveReversed", threshold(Kind::Number, 15), threshold(Kind::Number, 0),
                      100}),
    [](auto const& test) { return std::string(test.param.name); });

TEST_F(VisualResolverTest, AutomaticBoundsIncludeZero) {
  _table.setColumn({-30, -10});
  _table.addVisual("A1:A2", makeBar(threshold(Kind::AutoMin), threshold(Kind::AutoMax)));
  EXPECT_DOUBLE_EQ(barAt("A2"), 2 / 3.0);
}

TEST_F(VisualResolverTest, EqualValuesGiveTheFirstColourTheShortestBarAndTheHighestIcon) {
  _table.setColumn({0.1, 0.1, 0.1});
  _table.addVisual("A1:A3", makeScale());
  _table.addVisual("A1:A3", makeBar());
  _table.addVisual("A1:A3", makeIcons());
  auto const visuals = _table.resolve("A2");
  EXPECT_EQ(visuals.scale->colour, (DOM::Colour{0, 0, 0}));
  EXPECT_EQ(visuals.bar->extent, (BarExtent{0, 0, std::nullopt}));
  EXPECT_EQ(visuals.icon->icon.index, 2U);
}

TEST_F(VisualResolverTest, OnlyNumbersAreDrawnAndCounted) {
  _table.setColumn({0, 10, 5});
  _table.set("A4", FormulaModel::FormulaString{"100"});
  _table.set("A5", FormulaModel::FormulaBoolean{true});
  _table.set("A6", FormulaModel::FormulaError{});
  _table.addVisual("A1:A9", makeScale());
  EXPECT_EQ(scaleAt("A3"), 50);
  for (char const* cell : {"A4", "A5", "A6", "A7", "B1"}) {
    EXPECT_TRUE(_table.resolve(cell).isEmpty()) << cell;
  }
}

TEST_F(VisualResolverTest, TheFirstOfEachKindIsDrawn) {
  _table.setColumn({0, 10});
  _table.addVisual("A2", makeBar(threshold(Kind::Number, 0), threshold(Kind::Number, 40)));
  _table.addVisual("A1:A2", makeScale());
  _table.addVisual("A1:A2", makeBar());
  _table.addVisual("A1:A2", makeScale(threshold(Kind::Number, 0), threshold(Kind::Number, 20)));
  auto const visuals = _table.resolve("A2");
  EXPECT_EQ(visuals.bar->format, 0U);
  EXPECT_EQ(visuals.bar->extent.to, 0.25);
  EXPECT_EQ(visuals.scale->format, 1U);
  EXPECT_EQ(visuals.scale->colour.red, 100);
  EXPECT_FALSE(visuals.icon);
  EXPECT_EQ(_table.resolve("A1").bar->format, 2U);
}

TEST_F(VisualResolverTest, AConditionThatStopsHidesLaterVisuals) {
  _table.setColumn({0, 10});
  _table.addVisual("A1:A2", makeBar());
  _table.addCondition("A1:A2", "A1>5", true);
  _table.addVisual("A1:A2", makeScale());
  EXPECT_TRUE(_table.resolve("A1").scale);
  EXPECT_FALSE(_table.resolve("A2").scale);
  EXPECT_TRUE(_table.resolve("A2").bar);
}

TEST_F(VisualResolverTest, AConditionThatDoesNotStopHidesNothing) {
  _table.setColumn({0, 10});
  _table.addCondition("A1:A2", "A1>5");
  _table.addVisual("A1:A2", makeScale());
  EXPECT_TRUE(_table.resolve("A2").scale);
}

TEST_F(VisualResolverTest, ThePriorityDecidesBetweenAFillAndAScale) {
  _table.setColumn({0, 10});
  _table.addCondition("A1", "TRUE", false, _table.addFill());
  _table.addCondition("A2", "TRUE");
  _table.addVisual("A1:A2", makeScale());
  _table.addCondition("A2", "TRUE", false, _table.addFill());
  EXPECT_TRUE(_table.resolve("A1").scale->isBehindFill);
  EXPECT_FALSE(_table.resolve("A2").scale->isBehindFill);
}

TEST_F(VisualResolverTest, AnOwnConditionDecidesCellByCell) {
  _table.setColumn({0, 10, 20});
  _table.set("B1", 1);
  _table.set("B2", FormulaModel::FormulaString{"x"});
  _table.set("B3", -1);
  _table.addVisual("A1:A3", makeScale()).condition = Formulas::parseExpr("B1");
  EXPECT_TRUE(_table.resolve("A1").scale);
  EXPECT_FALSE(_table.resolve("A2").scale);
  EXPECT_TRUE(_table.resolve("A3").scale);
}

TEST_F(VisualResolverTest, AFormatWhoseConditionIsFalseLeavesTheCellToTheNext) {
  _table.setColumn({0, 10});
  _table.addVisual("A1:A2", makeScale()).condition = Formulas::parseExpr("A1>5");
  _table.addVisual("A1:A2", makeScale());
  EXPECT_EQ(_table.resolve("A1").scale->format, 1U);
  EXPECT_EQ(_table.resolve("A2").scale->format, 0U);
}

TEST_F(VisualResolverTest, AValueIsHiddenByABarOrAnIconThatIsDrawn) {
  _table.setColumn({0, 10});
  _table.set("B1", 1);
  auto icons = makeIcons();
  icons.showValue = false;
  _table.addVisual("A1", makeIcons());
  _table.addVisual("A1:A2", icons);
  auto bar = makeBar();
  bar.showValue = false;
  _table.addVisual("B1", bar);
  EXPECT_TRUE(_table.resolve("A1").showValue);
  EXPECT_FALSE(_table.resolve("A2").showValue);
  EXPECT_FALSE(_table.resolve("B1").showValue);
}

TEST_F(VisualResolverTest, ABarHasTheColoursOfItsSign) {
  _table.setColumn({-5, 5});
  auto bar = makeBar();
  bar.fill = DOM::Colour{1, 1, 1};
  bar.negativeFill = DOM::Colour{2, 2, 2};
  bar.border = DOM::Colour{3, 3, 3};
  bar.negativeBorder = DOM::Colour{4, 4, 4};
  _table.addVisual("A1:A2", bar);
  auto const negative = _table.resolve("A1");
  EXPECT_EQ(negative.bar->getFill(), bar.negativeFill);
  EXPECT_EQ(negative.bar->getBorder(), bar.negativeBorder);
  auto const positive = _table.resolve("A2");
  EXPECT_EQ(positive.bar->getFill(), bar.fill);
  EXPECT_EQ(positive.bar->getBorder(), bar.border);
}

TEST_F(VisualResolverTest, WithoutNegativeColoursABarHasThePositiveOnes) {
  _table.setColumn({-5, 5});
  auto bar = makeBar();
  bar.fill = DOM::Colour{1, 1, 1};
  bar.negativeBorder = DOM::Colour{4, 4, 4};
  _table.addVisual("A1:A2", bar);
  EXPECT_EQ(_table.resolve("A1").bar->getFill(), bar.fill);
  EXPECT_FALSE(_table.resolve("A1").bar->getBorder());
}

struct BadThreshold {
  char const* formula;
  char const* message;
};

class BadThresholds : public testing::TestWithParam<BadThreshold> {};

TEST_P(BadThresholds, AreTold) {
  VisualTable table;
  table.setColumn({0, 10});
  table.addVisual("A1:A2", makeScale(formulaThreshold(GetParam().formula), threshold(Kind::Max)));
  try {
    (void)table.resolve("A1");
    FAIL();
  } catch (ThresholdError const& error) {
    EXPECT_STREQ(error.what(), GetParam().message);
  }
}

INSTANTIATE_TEST_SUITE_P(
    VisualResolver, BadThresholds,
    testing::Values(BadThreshold{"1/0", "the formula of a threshold gives #DIV/0!, not a number"},
                    BadThreshold{"\"5\"", "the formula of a threshold gives a text, not a number"},
                    BadThreshold{"1=1",
                                 "the formula of a threshold gives a truth value, not a number"}));

TEST_F(VisualResolverTest, AFormatThatFailsDrawsNothingAndHidesLaterOnesOfItsKind) {
  _table.setColumn({0, 10});
  _table.addVisual("A1:A2", makeScale(formulaThreshold("1/0"), threshold(Kind::Max)));
  _table.addVisual("A1:A2", makeScale());
  _table.addVisual("A1:A2", makeBar());
  _table.prepare();
  std::size_t cells = 0;
  _table.visuals->visit(
      {.range = {0, 0, 9, 1}, .onFailure = ConditionalFormatters::TablePass::OnFailure::Skip},
      [&](VisualCell const& cell) {
        ++cells;
        ASSERT_NE(cell.failure, nullptr);
        EXPECT_EQ(cell.failure->format, 0U);
        EXPECT_THROW(std::rethrow_exception(cell.failure->exception), ThresholdError);
        EXPECT_FALSE(cell.visuals.scale);
        EXPECT_TRUE(cell.visuals.bar);
      });
  EXPECT_EQ(cells, 2U);
}

TEST_F(VisualResolverTest, TheThresholdOfTheFirstIconDoesNotCount) {
  _table.setColumn({0, 10});
  auto icons = makeIcons();
  icons.steps[0] = formulaThreshold("1/0");
  _table.addVisual("A1:A2", icons);
  EXPECT_EQ(_table.resolve("A2").icon->icon.index, 2U);
}

TEST_F(VisualResolverTest, ThresholdsThatDependOnTheMomentAreThoseOfThePass) {
  _table.setColumn({100});
  _table.addVisual("A1",
                   makeScale(threshold(Kind::Number, 0), formulaThreshold("YEAR(NOW())-1900")));
  _table.prepare();
  for (auto const& [year, expected] : {std::pair(2000, 100), std::pair(2100, 50)}) {
    OfficeUtils::PinnedMoment const pinned(
        std::chrono::sys_days(std::chrono::year(year) / std::chrono::June / 1));
    EXPECT_EQ(scaleAt("A1"), expected);
  }
}

TEST_F(VisualResolverTest, APassSpendsFromItsBudget) {
  for (unsigned long row = 0; row < 10'000; ++row) {
    _table.table.setValue(row, 0, FormulaModel::FormulaNumber{FloatNumber(1.0)});
  }
  _table.addVisual("A1:A10000", makeScale());
  _table.prepare();
  WorkBudget little({.steps = 15'000});
  EXPECT_THROW(_table.visuals->visit({.range = {0, 0, 10'000, 1}, .budget = &little},
                                     [](VisualCell const&) {}),
               WorkBudgetExceeded);
  WorkBudget enough({.steps = 30'000});
  EXPECT_NO_THROW(_table.visuals->visit({.range = {0, 0, 10'000, 1}, .budget = &enough},
                                        [](VisualCell const&) {}));
}

TEST_F(VisualResolverTest, RangesFollowTheirCells) {
  _table.setColumn({0, 10, 5});
  _table.addVisual("A1:A3", makeScale());
  _table.table.insertRows(0, 4);
  EXPECT_EQ(scaleAt("A7"), 50);
}

}  // namespace
}  // namespace Zorv::Visuals
