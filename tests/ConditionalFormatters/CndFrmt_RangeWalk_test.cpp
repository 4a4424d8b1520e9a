#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

#include <stdexcept>
#include <string>
#include <vector>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "ConditionalFormatters/Formats/CndFrmt_FormatWalk.h"
#include "DOM/Table.h"
#include "FormulaModel/FormulaValue.h"
#include "support/Journal.h"

// The walk over the cells of ranges, and that over the formats of a cell, step by step.
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

class FormatsOnTest : public testing::Test {
protected:
  [[nodiscard]] std::vector<FormatIndex> listFormatsOn(
      unsigned long row, unsigned answers = DOM::CellInfo::always) const {
    DOM::CellInfo const cell(table, CellIndex(RowIndex(row), ColumnIndex(0)), nullptr, answers);
    std::vector<FormatIndex> indices;
    for (FormatIndex const index : findFormatsOn(refs, cell)) {
      indices.push_back(index);
    }
    return indices;
  }

  Journal journal;
  DOM::Table table{journal};
  DOM::ConditionalFormat const format{
      {}, DOM::UniquenessConditionalFormatOperator{DOM::UniquenessType::Unique}, UUID()};
  ConditionalFormatRefs const refs{
      {{{0, 0, 2, 1}}, format}, {{}, format}, {{{1, 0, 2, 1}}, format}};
};

TEST_F(FormatsOnTest, TestsTheRangesOfOneFormatAfterTheOther) {
  EXPECT_THAT(listFormatsOn(0), ElementsAre(0U));
  EXPECT_THAT(listFormatsOn(1), ElementsAre(0U, 2U));
  EXPECT_THAT(listFormatsOn(2), IsEmpty());
}

TEST_F(FormatsOnTest, WhatTheHostsGettersThrowReachesTheCaller) {
  // For the first format, and for the one that follows it.
  EXPECT_THROW(static_cast<void>(listFormatsOn(0, 0)), std::out_of_range);
  EXPECT_THROW(static_cast<void>(listFormatsOn(0, 1)), std::out_of_range);
  EXPECT_THAT(listFormatsOn(0, 2), ElementsAre(0U));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
