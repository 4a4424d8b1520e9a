#include "ConditionalFormatters/Live/CndFrmt_AreaLog.h"

#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

using Areas = std::vector<TableRange>;

constexpr TableRange first{0, 0, 1, 1};
constexpr TableRange second{5, 5, 6, 6};

TEST(AreaLog, GivesWhatIsNewSinceAVersion) {
  AreaLog log;
  auto const start = log.getVersion();
  log.add({first});
  auto const afterFirst = log.getVersion();
  log.add({second});

  Areas areas;
  EXPECT_TRUE(log.appendSince(start, areas));
  EXPECT_EQ(areas, (Areas{first, second}));
  EXPECT_TRUE(log.appendSince(afterFirst, areas));
  EXPECT_EQ(areas, (Areas{first, second, second}));
  EXPECT_TRUE(log.appendSince(log.getVersion(), areas));
  EXPECT_EQ(areas.size(), 3U);
}

TEST(AreaLog, ForgetsWhatWasKeptWhenAnythingMayBeNew) {
  AreaLog log;
  auto const start = log.getVersion();
  log.add({first});
  log.addEverything();
  auto const afterwards = log.getVersion();
  log.add({second});

  Areas areas;
  EXPECT_FALSE(log.appendSince(start, areas));
  EXPECT_TRUE(areas.empty());
  EXPECT_TRUE(log.appendSince(afterwards, areas));
  EXPECT_EQ(areas, (Areas{second}));
}

TEST(AreaLog, KeepsTheLastChangesOnly) {
  AreaLog log;
  auto const start = log.getVersion();
  auto beforeLast = start;
  for (int change = 0; change < 1000; ++change) {
    beforeLast = log.getVersion();
    log.add({first});
  }
  Areas areas;
  EXPECT_FALSE(log.appendSince(start, areas));
  EXPECT_TRUE(log.appendSince(beforeLast, areas));
  EXPECT_EQ(areas, (Areas{first}));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
