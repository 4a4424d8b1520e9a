#include "DOM/ConditionalFormat.h"

#include <utility>

#include <gtest/gtest.h>
#include <boost/variant/get.hpp>

namespace Zorv::DOM {
namespace {

TEST(ConditionalFormat, KeepsItsParts) {
  UUID const style = UUID::generate();
  ConditionalFormat const format(
      {{RowID(1), ColumnID(2), RowID(3), ColumnID(4)}},
      TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Bottom, 3, false), style,
      true);
  ASSERT_EQ(format.getRanges().size(), 1U);
  EXPECT_EQ(format.getRanges()[0].firstColumn, ColumnID(2));
  EXPECT_EQ(format.getRanges()[0].lastRow, RowID(3));
  EXPECT_EQ(boost::get<TopBottomConditionalFormatOperator>(format.getOperator()).getValue(), 3U);
  EXPECT_EQ(format.getStyleUUID(), style);
  EXPECT_TRUE(format.getStopCalculateConditions());
}

TEST(ConditionalFormat, DoesNotStopByDefault) {
  ConditionalFormat const format({}, UniquenessConditionalFormatOperator{}, UUID());
  EXPECT_FALSE(format.getStopCalculateConditions());
  EXPECT_EQ(&format.getOperator(), &format.getOperator());
}

}  // namespace
}  // namespace Zorv::DOM
