#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include <stdexcept>
#include <string>
#include <vector>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "support/Journal.h"

// The walk over the cells of ranges, step by step.
namespace Zorv::ConditionalFormatters {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using TestSupport::Journal;

class NotingProvider final : public ValueContextProvider {
public:
  explicit NotingProvider(Journal& journal) : _journal(journal) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    _journal.note("getCellValue " + std::to_string(cellInfo.getRowIndex()));
    return FormulaModel::FormulaString{std::to_string(cellInfo.getRowIndex())};
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override {
    throw std::logic_error("not to be asked");
  }
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    throw std::logic_error("not to be asked");
  }

private:
  Journal& _journal;
};

class RangeWalkTest : public testing::Test {
protected:
  using Texts = std::vector<std::string>;

  [[nodiscard]] Texts collect(std::vector<TableRange> const& ranges) {
    return factory.collectValuesFromRange<Texts>(ranges, [&](Texts& texts, FormulaValue value) {
      journal.note("collect");
      texts.push_back(boost::get<FormulaModel::FormulaString>(value).value);
    });
  }

  Journal journal;
  DOM::Table table{journal};
  NotingProvider provider{journal};
  OperatorsFactory factory{provider, table};
};

TEST_F(RangeWalkTest, EachRangeIsWalkedByACopyOfItsBegin) {
  EXPECT_THAT(collect({{4, 0, 6, 1}}), ElementsAre("4", "5"));
  EXPECT_THAT(journal.getEntries(),
              ElementsAre("getRangeIterators 4 to 6", "copy begin",                            //
                          "begin' != end", "begin'.getCellInfo", "getCellValue 4", "collect",  //
                          "++begin'",                                                          //
                          "begin' != end", "begin'.getCellInfo", "getCellValue 5", "collect",  //
                          "++begin'", "begin' != end"));
}

TEST_F(RangeWalkTest, RangesAreWalkedOneAfterTheOther) {
  EXPECT_THAT(collect({{7, 0, 8, 1}, {3, 0, 3, 1}, {2, 0, 3, 1}}), ElementsAre("7", "2"));
  EXPECT_THAT(journal.getEntries(),
              ElementsAre("getRangeIterators 7 to 8", "copy begin",                            //
                          "begin' != end", "begin'.getCellInfo", "getCellValue 7", "collect",  //
                          "++begin'", "begin' != end",                                         //
                          "getRangeIterators 3 to 3", "copy begin", "begin' != end",           //
                          "getRangeIterators 2 to 3", "copy begin",                            //
                          "begin' != end", "begin'.getCellInfo", "getCellValue 2", "collect",  //
                          "++begin'", "begin' != end"));
}

TEST_F(RangeWalkTest, WithoutRangesNothingIsAsked) {
  EXPECT_THAT(collect({}), IsEmpty());
  EXPECT_THAT(journal.getEntries(), IsEmpty());
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
