#include "Formulas/Lookups/SummedValue.h"

#include <bit>
#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(SummedValue, KeepsNumbersToTheBit) {
  for (double const number : {0.0, -0.0, 0.1, -1e300, std::numeric_limits<double>::lowest(),
                              std::numeric_limits<double>::denorm_min()}) {
    Value const kept = SummedValue(Value::number(number)).toValue();
    ASSERT_TRUE(kept.isNumber());
    EXPECT_EQ(std::bit_cast<std::uint64_t>(kept.asNumber()), std::bit_cast<std::uint64_t>(number));
  }
}

TEST(SummedValue, KeepsErrors) {
  for (FormulaErrorCode const code :
       {FormulaErrorCode::Null, FormulaErrorCode::DivisionByZero, FormulaErrorCode::NotAvailable}) {
    Value const kept = SummedValue(Value::error(code)).toValue();
    ASSERT_TRUE(kept.isError());
    EXPECT_EQ(kept.asError(), code);
  }
}

TEST(SummedValue, KeepsNothingElse) {
  EXPECT_TRUE(SummedValue().toValue().isEmpty());
  for (Value const& value : {Value(), Value::text("1"), Value::boolean(true)}) {
    EXPECT_TRUE(SummedValue(value).toValue().isEmpty());
  }
}

}  // namespace

}  // namespace Zorv::Formulas
