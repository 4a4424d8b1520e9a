// What a live resolver keeps of ranges.

#include <chrono>
#include <limits>

#include <gtest/gtest.h>

#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "ConditionalFormatters/LiveSheet.h"

namespace Zorv::ConditionalFormatters {
namespace {

using TestSupport::LiveSheet;

/// For formulas a cell with an infinite number holds an error.
TEST(LiveAreas, AnswerLikeAWalkWhereANumberIsInfinite) {
  constexpr double limit = std::numeric_limits<double>::infinity();
  for (char const* const formula :
       {"AVERAGE($A:$A)>1", "SUM($A:$A)>1", "COUNT($A:$A)=5", "A1=MAX($A:$A)", "A1=MIN($A:$A)",
        "A1>MEDIAN($A:$A)", "A1=LARGE($A:$A,2)", "A1=PERCENTILE($A:$A,0.5)", "RANK(A1,$A:$A)=2",
        "COUNTIF($A:$A,A1)=1"}) {
    LiveSheet sheet;
    sheet.setColumn(0, {1, 46'348, -7, 7, limit, -limit});
    sheet.addRule("A1:A9", LiveSheet::isTrue(formula));
    LiveResolver const walking = sheet.follow();
    LiveResolver following = sheet.follow();
    while (following.prepareSome(std::chrono::milliseconds(1))) {
    }
    for (unsigned long row = 0; row < 9; ++row) {
      auto const cell = sheet.table.getCellInfo(row, 0);
      EXPECT_EQ(following.holds(0, cell), walking.holds(0, cell)) << formula << ", row " << row;
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
