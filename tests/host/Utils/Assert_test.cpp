#include "Utils/Assert.h"

#include <gtest/gtest.h>

namespace Zorv {
namespace {

TEST(AssertDeathTest, ReportsFileLineAndExpressionAndAborts) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(doFailAssert("/code/Some/Folder/File", 57, "!ranges.empty()"),
              testing::KilledBySignal(SIGABRT),
              "^/code/Some/Folder/File:57: assertion failed: \"!ranges.empty\\(\\)\"\n$");
}

TEST(AssertDeathTest, ReportsAMessageBehindTheExpression) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  boost::string_ref const message = boost::string_ref("Empty shouldn't be hashed.!").substr(0, 26);
  EXPECT_EXIT(
      doFailAssert("/code/Some/Folder/File", 42, "", message), testing::KilledBySignal(SIGABRT),
      "^/code/Some/Folder/File:42: assertion failed: \"\": Empty shouldn't be hashed\\.\n$");
}

}  // namespace
}  // namespace Zorv
