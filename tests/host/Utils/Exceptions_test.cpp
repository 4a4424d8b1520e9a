#include "Utils/Exceptions.h"

#include <stdexcept>
#include <type_traits>

#include <gtest/gtest.h>

namespace Zorv {
namespace {

TEST(Exceptions, KeepTheirMessage) {
  EXPECT_STREQ(BaseRuntimeError("first").what(), "first");
  EXPECT_STREQ(BadNumCastError("second").what(), "second");
}

TEST(Exceptions, AreCaughtAsTheirBases) {
  EXPECT_TRUE((std::is_base_of_v<std::runtime_error, BaseRuntimeError>));
  EXPECT_THROW(throw BadNumCastError("x"), BaseRuntimeError);
}

}  // namespace
}  // namespace Zorv
