#include "ConditionalFormatters/Operators/CndFrmt_ValueCollectors.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <vector>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "support/RecordingHost.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::ElementsAre;
using testing::IsEmpty;

FormulaValue const anError = error(FormulaModel::FormulaErrorCode::Name);

class ValueCollectionTest : public testing::Test {
protected:
  [[nodiscard]] std::vector<double> collectNumbers(std::vector<TableRange> const& ranges) const {
    std::vector<double> numbers;
    for (FloatNumber const& collected :
         factory.collectValuesFromRange<std::vector<FloatNumber>>(ranges, pushNumber)) {
      numbers.push_back(collected.get());
    }
    return numbers;
  }
  [[nodiscard]] FormulaValueMultiset collectValues(std::vector<TableRange> const& ranges) const {
    return factory.collectValuesFromRange<FormulaValueMultiset>(ranges, insertNonEmpty);
  }

  RecordingHost host;
  std::unique_ptr<RecordingValueContextProvider> provider = host.makeProvider();
  OperatorsFactory const factory{*provider, host.table};
};

TEST_F(ValueCollectionTest, OnlyNumbersEnterTheNumbers) {
  host.table.setValue(0, 0, text("5"));
  host.table.setValue(1, 0, boolean(true));
  host.table.setValue(2, 0, anError);
  host.table.setValue(3, 0, empty());
  EXPECT_THAT(collectNumbers({{0, 0, 4, 1}}), IsEmpty());
  host.table.setValue(4, 0, number(-7.5));
  EXPECT_THAT(collectNumbers({{0, 0, 5, 1}}), ElementsAre(-7.5));
}

TEST_F(ValueCollectionTest, NumbersStandInTheOrderInWhichTheirCellsAreVisited) {
  host.table.setValue(0, 0, number(1));
  host.table.setValue(0, 1, number(2));
  host.table.setValue(1, 0, number(3));
  host.table.setValue(1, 1, number(1));
  EXPECT_THAT(collectNumbers({{1, 0, 2, 2}, {0, 0, 1, 2}}), ElementsAre(3, 1, 1, 2));
}

TEST_F(ValueCollectionTest, EverythingButEmptyValuesEntersTheValues) {
  host.table.setValue(0, 0, number(1));
  host.table.setValue(1, 0, text("a"));
  host.table.setValue(2, 0, boolean(false));
  host.table.setValue(3, 0, anError);
  host.table.setValue(4, 0, empty());
  host.table.setValue(5, 0, text("a"));
  FormulaValueMultiset const values = collectValues({{0, 0, 6, 1}});
  EXPECT_EQ(values.size(), 5U);
  EXPECT_EQ(values.count(number(1)), 1U);
  EXPECT_EQ(values.count(text("a")), 2U);
  EXPECT_EQ(values.count(boolean(false)), 1U);
  EXPECT_EQ(values.count(anError), 1U);
}

TEST_F(ValueCollectionTest, ACellOfTwoRangesCountsTwice) {
  host.table.setValue(1, 1, number(8));
  std::vector<TableRange> const ranges{{0, 0, 2, 2}, {1, 1, 3, 3}};
  EXPECT_THAT(collectNumbers(ranges), ElementsAre(8, 8));
  EXPECT_EQ(collectValues(ranges).count(number(8)), 2U);
}

TEST_F(ValueCollectionTest, TheProviderIsAskedOnceForEachVisitedCellWhateverItHolds) {
  host.table.setValue(0, 0, text("no number"));
  host.table.setValue(1, 0, empty());
  host.table.setValue(5, 0, number(1));  // outside
  (void)collectNumbers({{0, 0, 5, 1}});
  EXPECT_THAT(host.journal.getEntries(), ElementsAre("getCellValue(0,0)", "getCellValue(1,0)"));
}

TEST_F(ValueCollectionTest, TheProvidersValueCountsAndNotTheCellsOwn) {
  host.table.setValue(0, 0, text("stored"));
  provider->answerBy([](DOM::CellInfo const&) { return number(3); });
  EXPECT_THAT(collectNumbers({{0, 0, 1, 1}}), ElementsAre(3));
}

TEST_F(ValueCollectionTest, NoRangesGiveEmptyCollections) {
  host.table.setValue(0, 0, number(1));
  EXPECT_THAT(collectNumbers({}), IsEmpty());
  EXPECT_TRUE(collectValues({}).empty());
}

TEST_F(ValueCollectionTest, ACollectorOwnsTheValuesThatItGets) {
  host.table.setValue(0, 0, text("a value of some length, kept on the heap"));
  auto const texts = factory.collectValuesFromRange<std::vector<std::string>>(
      {{0, 0, 1, 1}}, [](std::vector<std::string>& container, FormulaValue value) {
        container.push_back(std::move(boost::get<FormulaModel::FormulaString>(value).value));
      });
  EXPECT_THAT(texts, ElementsAre("a value of some length, kept on the heap"));
}

TEST_F(ValueCollectionTest, AFailureEndsTheWalk) {
  for (unsigned long row = 0; row < 3; ++row) {
    host.table.setValue(row, 0, number(1));
  }
  provider->answerBy([](DOM::CellInfo const& cellInfo) -> FormulaValue {
    if (cellInfo.getRowIndex() == 1) {
      throw std::out_of_range("no value");
    }
    return number(1);
  });
  EXPECT_THROW((void)collectNumbers({{0, 0, 3, 1}}), std::out_of_range);
  EXPECT_EQ(host.journal.count("getCellValue"), 2U);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
