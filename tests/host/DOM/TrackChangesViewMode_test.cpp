#include "DOM/TrackChangesViewMode.h"

#include <gtest/gtest.h>

namespace Zorv::DOM {
namespace {

TEST(TrackChangesViewMode, TheFinalViewHasTheNumberOfTheContract) {
  EXPECT_EQ(static_cast<int>(TrackChangesViewMode::Final), 4);
}

}  // namespace
}  // namespace Zorv::DOM
