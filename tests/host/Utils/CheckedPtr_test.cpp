#include "Utils/CheckedPtr.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

constexpr char const* wholeReport =
    "^/code/Utils/Public/Ptr/CheckedPtr:145: assertion failed: \"_ptr\"\n$";

TEST(CheckedPtr, GivesTheObject) {
  CheckedPtr<std::string> const ptr(std::make_shared<std::string>("text"));
  EXPECT_EQ(*ptr, "text");
  EXPECT_EQ(ptr->size(), 4U);
}

TEST(CheckedPtr, SharesTheObject) {
  auto const owner = std::make_shared<int>(1);
  CheckedPtr<int> const ptr(owner);
  EXPECT_EQ(owner.use_count(), 2);
}

TEST(CheckedPtrDeathTest, StopsTheProcessWhenANullOneIsDereferenced) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  CheckedPtr<std::string> const ptr(nullptr);
  EXPECT_EXIT((void)*ptr, testing::KilledBySignal(SIGABRT), wholeReport);
  EXPECT_EXIT((void)ptr->size(), testing::KilledBySignal(SIGABRT), wholeReport);
}

}  // namespace
}  // namespace Zorv
