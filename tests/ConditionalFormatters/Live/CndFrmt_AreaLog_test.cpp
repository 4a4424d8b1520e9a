#include "ConditionalFormatters/Live/CndFrmt_AreaLog.h"

#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

using Areas = std::vector<TableRange>;

constexpr TableRange firstArea{0, 0, 1, 1};
constexpr TableRange secondArea{5, 5, 6, 6};

TEST(AreaLog, GivesWhatIsNewSinceAVersion) {
  AreaLog log;
  auto const start = log.getVersion();
  log.add({{firstArea}, {}, {}});
  auto const afterFirst = log.getVersion();
  log.add({{secondArea}, {{secondArea, 1, 2}}, {{firstArea, {5.0}}}});

  ReachedAreas reached;
  EXPECT_TRUE(log.appendSince(start, reached));
  EXPECT_EQ(reached.areas, (Areas{firstArea, secondArea}));
  EXPECT_TRUE(log.appendSince(afterFirst, reached));
  EXPECT_EQ(reached.areas, (Areas{firstArea, secondArea, secondArea}));
  EXPECT_TRUE(log.appendSince(log.getVersion(), reached));
  EXPECT_EQ(reached.areas.size(), 3U);
  EXPECT_EQ(reached.numbers, (std::vector<NumberArea>(2, {secondArea, 1, 2})));
  EXPECT_EQ(reached.classes, (std::vector<ClassArea>(2, {firstArea, {5.0}})));
}

TEST(AreaLog, ForgetsWhatWasKeptWhenAnythingMayBeNew) {
  AreaLog log;
  auto const start = log.getVersion();
  log.add({{firstArea}, {}, {}});
  log.addEverything();
  auto const afterwards = log.getVersion();
  log.add({{secondArea}, {{secondArea, 1, 2}}, {{firstArea, {5.0}}}});

  ReachedAreas reached;
  EXPECT_FALSE(log.appendSince(start, reached));
  EXPECT_TRUE(reached.areas.empty());
  EXPECT_TRUE(log.appendSince(afterwards, reached));
  EXPECT_EQ(reached.areas, (Areas{secondArea}));
}

TEST(AreaLog, KeepsTheLastChangesOnly) {
  AreaLog log;
  auto const start = log.getVersion();
  auto beforeLast = start;
  for (int change = 0; change < 1000; ++change) {
    beforeLast = log.getVersion();
    log.add({{firstArea}, {}, {}});
  }
  ReachedAreas reached;
  EXPECT_FALSE(log.appendSince(start, reached));
  EXPECT_TRUE(log.appendSince(beforeLast, reached));
  EXPECT_EQ(reached.areas, (Areas{firstArea}));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
