#include "FormulaModel/FormulaException.h"

#include <gtest/gtest.h>

namespace Zorv::FormulaModel {
namespace {

TEST(FormulaException, IsABaseRuntimeErrorWithItsMessage) {
  try {
    throw FormulaException("no truth value");
  } catch (BaseRuntimeError const& error) {
    EXPECT_STREQ(error.what(), "no truth value");
  }
}

}  // namespace
}  // namespace Zorv::FormulaModel
