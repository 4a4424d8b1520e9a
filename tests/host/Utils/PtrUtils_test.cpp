#include "Utils/PtrUtils.h"

#include <memory>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

TEST(PtrUtils, GiveTheObjectBehindAnyPointer) {
  int number = 1;
  int* const plain = &number;
  auto const owning = std::make_unique<int>(2);
  auto const shared = std::make_shared<int const>(3);
  EXPECT_EQ(&PtrUtils::derefObtained(plain), &number);
  EXPECT_EQ(&PtrUtils::derefHeld(plain), &number);
  EXPECT_EQ(&PtrUtils::derefObtained(owning), owning.get());
  EXPECT_EQ(&PtrUtils::derefHeld(shared), shared.get());
}

TEST(PtrUtilsDeathTest, NullPointersStopTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  int const* const plain = nullptr;
  std::unique_ptr<int> const owning;
  EXPECT_EXIT((void)PtrUtils::derefObtained(plain), testing::KilledBySignal(SIGABRT),
              "^/code/Utils/Public/Ptr/PtrUtils:246: assertion failed: \"plainPtr\"\n$");
  EXPECT_EXIT((void)PtrUtils::derefHeld(owning), testing::KilledBySignal(SIGABRT),
              "^/code/Utils/Public/Ptr/PtrUtils:254: assertion failed: \"plainPtr\"\n$");
}

}  // namespace
}  // namespace Zorv
