#include "ConditionalFormatters/CndFrmt_ConditionalFormatRefs.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <future>
#include <stdexcept>
#include <vector>

#include "ConditionalFormatters/CalculatorTest.h"
#include "Utils/Exceptions.h"
#include "support/RecordingServices.h"

// How the list of a table's formats is made, seen from inside the conversion of their ranges.
namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

constexpr TableRange firstCell{0, 0, 1, 1};

class ConditionalFormatRefsConversionTest : public CalculatorTest {
protected:
  RecordingServices services{host.journal};
};

TEST_F(ConditionalFormatRefsConversionTest, EachFormatIsConvertedOnceInTheTablesOrder) {
  for (int i = 0; i < 3; ++i) {
    addFormat(host.table, {firstCell}, holdsAlways());
  }
  unsigned long conversions = 0;
  services.convertRangesBy([&](DOM::Table const& table) {
    EXPECT_EQ(&table, &host.table);
    ++conversions;
    return std::vector<TableRange>(conversions, TableRange{conversions, 0, 9, 9});
  });
  ConditionalFormatRefs const& refs = calculator->getConditionalFormatRefs(host.table);
  EXPECT_EQ(&calculator->getConditionalFormatRefs(host.table), &refs);
  EXPECT_EQ(conversions, 3U);
  ASSERT_THAT(refs, SizeIs(3));
  for (unsigned long i = 0; i < 3; ++i) {
    EXPECT_THAT(refs[i].first, SizeIs(i + 1));
    EXPECT_THAT(refs[i].first, Each(TableRange{i + 1, 0, 9, 9}));
  }
}

TEST_F(ConditionalFormatRefsConversionTest, AListMadeMeanwhileIsKeptAndTheOuterOneDiscarded) {
  addFormat(host.table, {firstCell}, holdsAlways());
  addFormat(host.table, {firstCell}, holdsAlways());
  for (unsigned long const reentrant : {1UL, 2UL}) {
    SCOPED_TRACE(reentrant);
    calculator->clearTablesRangesCache();
    unsigned long conversions = 0;
    ConditionalFormatRefs const* inner = nullptr;
    services.convertRangesBy([&](DOM::Table const& table) {
      unsigned long const conversion = ++conversions;
      if (conversion == reentrant) {
        inner = &calculator->getConditionalFormatRefs(table);
        EXPECT_THAT(*inner, SizeIs(2));
      }
      return std::vector{TableRange{conversion, 0, 9, 9}};
    });
    ConditionalFormatRefs const& outer = calculator->getConditionalFormatRefs(host.table);
    EXPECT_EQ(&outer, inner);
    EXPECT_EQ(conversions, 4U);
    ASSERT_THAT(outer, SizeIs(2));
    EXPECT_THAT(outer[0].first, ElementsAre(TableRange{reentrant + 1, 0, 9, 9}));
    EXPECT_THAT(outer[1].first, ElementsAre(TableRange{reentrant + 2, 0, 9, 9}));
  }
}

TEST_F(ConditionalFormatRefsConversionTest, AFailedConversionLeavesNoListAndUnlocks) {
  for (int i = 0; i < 3; ++i) {
    addFormat(host.table, {firstCell}, holdsAlways());
  }
  for (int failing = 1; failing <= 3; ++failing) {
    SCOPED_TRACE(failing);
    calculator->clearTablesRangesCache();
    host.journal.clear();
    services.convertRangesBy([conversions = 0, failing](DOM::Table const&) mutable {
      if (++conversions == failing) {
        throw std::out_of_range("no ranges");
      }
      return std::vector{firstCell};
    });
    EXPECT_THROW((void)calculator->getConditionalFormatRefs(host.table), std::out_of_range);
    EXPECT_EQ(host.journal.count("convertToTableRanges"), static_cast<std::size_t>(failing));
    // On a thread of its own, which could not enter were the lock still held.
    auto size = std::async(std::launch::async,
                           [&] { return calculator->getConditionalFormatRefs(host.table).size(); });
    EXPECT_EQ(size.get(), 3U);
    EXPECT_EQ(host.journal.count("convertToTableRanges"), static_cast<std::size_t>(failing) + 3);
  }
}

constexpr unsigned long twoTo32 = 1UL << 32U;
constexpr unsigned long twoTo63 = 1UL << 63U;
constexpr unsigned long last = ~0UL;

/// Rows of a range that is one column wide, and a row.
struct FarRow {
  char const* name;
  unsigned long first;
  unsigned long end;
  unsigned long row;
  bool held;
};

constexpr FarRow farRows[] = {
    {"both beyond 2^63", twoTo63, twoTo63 + 10, twoTo63 + 9, true},
    {"the end beyond 2^63", twoTo63, twoTo63 + 10, twoTo63 + 10, false},
    {"before the first beyond 2^63", twoTo63, twoTo63 + 10, twoTo63 - 1, false},
    {"a near row in a range that ends far", 0, twoTo63 + 2, 5, true},
    {"a far row in a range that begins near", 0, twoTo63 + 2, twoTo63 + 1, true},
    {"the last but one", 0, last, last - 1, true},
    {"the last", 0, last, last, false},
    {"a far row and a near range", 0, 10, twoTo63 + 5, false},
    {"a near row and a far range", twoTo63, last, 5, false},
    {"equal in its lower 32 bits", 0, 10, twoTo32 + 5, false},
    {"a near row and a range beyond 2^32", twoTo32, twoTo32 + 10, 5, false},
    {"beyond 2^32", twoTo32, twoTo32 + 10, twoTo32 + 9, true},
};

TEST_F(ConditionalFormatRefsConversionTest, PositionsCompareAsUnsigned64BitNumbers) {
  addFormat(host.table, {firstCell}, holdsAlways(), addFont(1, true));
  for (FarRow const& far : farRows) {
    SCOPED_TRACE(far.name);
    calculator->clearTablesRangesCache();
    services.convertRangesBy([&](DOM::Table const&) {
      return std::vector{TableRange{far.first, 3, far.end, 4}};
    });
    EXPECT_EQ(resolve(far.row, 3) != nullptr, far.held);
    calculator->clearTablesRangesCache();
    services.convertRangesBy([&](DOM::Table const&) {
      return std::vector{TableRange{3, far.first, 4, far.end}};
    });
    EXPECT_EQ(resolve(3, far.row) != nullptr, far.held) << "as a column";
  }
}

TEST_F(ConditionalFormatRefsConversionTest, AFormulaForAFarPositionThrows) {
  addFormat(host.table, {firstCell},
            DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Equal, Expr()));
  services.convertRangesBy([](DOM::Table const&) {
    return std::vector{TableRange{0, 0, last, last}};
  });
  for (unsigned long const far : {1UL << 31U, twoTo32, twoTo63, last - 1}) {
    SCOPED_TRACE(far);
    EXPECT_THROW((void)resolve(far, 0), BadNumCastError);
    EXPECT_THROW((void)resolve(0, far), BadNumCastError);
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
