// Threads that ask a map for an index while another one builds it.

#include "Formulas/Lookups/LookupMap.h"

#include <barrier>
#include <cstddef>
#include <functional>
#include <memory>
#include <new>
#include <stdexcept>
#include <thread>
#include <utility>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

class FakeIndex {
public:
  using Key = int;

  [[nodiscard]] std::size_t memory() const noexcept { return 1000; }
};

using FakeMap = LookupMap<FakeIndex>;

constexpr LookupCost sharedCost = {.saved = 100, .build = 100, .isShared = true};

std::unique_ptr<FakeIndex> makeFake(SharedWork& /*work*/) { return std::make_unique<FakeIndex>(); }

FakeIndex const* ask(FakeMap& map, FakeMap::Build const& build) {
  return map.getOrCreate(0, sharedCost, build);
}

/// Results that two threads were given; see buildTogether().
struct Given {
  FakeIndex const* maker = nullptr;
  FakeIndex const* helper = nullptr;
};

/// Has one thread make an index of two parts, each of which waits for the other to be in hand, and
/// another one ask for it meanwhile; `end(work)` ends the making.
void buildTogether(FakeMap& map, FakeMap::Build const& end, Given& given) {
  EXPECT_EQ(ask(map, makeFake), nullptr);
  EXPECT_EQ(ask(map, makeFake), nullptr);
  FakeIndex const notAskedYet;
  given.helper = &notAskedYet;
  std::jthread helper;
  std::barrier bothAreAtWork(2);
  given.maker = ask(map, [&](SharedWork& work) {
    helper = std::jthread([&] { given.helper = ask(map, makeFake); });
    work.run(2, [&](std::size_t) { bothAreAtWork.arrive_and_wait(); });
    return end(work);
  });
}

TEST(LookupMapConcurrency, WhoAsksForAnIndexInTheMakingHelpsAndGetsIt) {
  LookupBudget budget;
  FakeMap map(budget);
  Given given;
  buildTogether(map, makeFake, given);
  EXPECT_NE(given.maker, nullptr);
  EXPECT_EQ(given.helper, given.maker);
  EXPECT_EQ(ask(map, makeFake), given.maker);
}

/// Ends a making by an exception of some kind, in a part or between them.
template <class Failure>
FakeMap::Build failBy(Failure const& failure, bool inAPart) {
  return [=](SharedWork& work) -> std::unique_ptr<FakeIndex> {
    if (!inAPart) {
      throw Failure(failure);
    }
    work.run(2, [&](std::size_t) { throw Failure(failure); });
    return std::make_unique<FakeIndex>();
  };
}

TEST(LookupMapConcurrency, AHelperIsSentAwayWhenTheMemoryDoesNotSuffice) {
  for (bool const inAPart : {false, true}) {
    LookupBudget budget;
    FakeMap map(budget);
    Given given;
    buildTogether(map, failBy(std::bad_alloc(), inAPart), given);
    EXPECT_EQ(given.maker, nullptr);
    EXPECT_EQ(given.helper, nullptr);
    EXPECT_EQ(ask(map, makeFake), nullptr);
  }
}

TEST(LookupMapConcurrency, OtherFailuresReachTheMakerAndSendTheHelperAway) {
  for (bool const inAPart : {false, true}) {
    LookupBudget budget;
    FakeMap map(budget);
    Given given;
    EXPECT_THROW(buildTogether(map, failBy(std::runtime_error("broken"), inAPart), given),
                 std::runtime_error);
    EXPECT_EQ(given.helper, nullptr);
    EXPECT_EQ(ask(map, makeFake), nullptr);
  }
}

/// Each has a part of the other's index in hand: neither may wait.
TEST(LookupMapConcurrency, AThreadAtWorkOnAnIndexWaitsForNoOther) {
  LookupBudget budget;
  FakeMap map(budget);
  int const other = 1;
  int const one = 2;
  std::barrier bothAreAtWork(2);
  auto const makeAskingFor = [&](int const key) {
    return [&, key](SharedWork& work) {
      work.run(1, [&](std::size_t) {
        bothAreAtWork.arrive_and_wait();
        EXPECT_EQ(map.getOrCreate(key, sharedCost, makeFake), nullptr);
        bothAreAtWork.arrive_and_wait();
      });
      return std::make_unique<FakeIndex>();
    };
  };
  for (int const key : {one, other}) {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(map.getOrCreate(key, sharedCost, makeFake), nullptr);
    }
  }
  std::jthread const thread(
      [&] { EXPECT_NE(map.getOrCreate(other, sharedCost, makeAskingFor(one)), nullptr); });
  EXPECT_NE(map.getOrCreate(one, sharedCost, makeAskingFor(other)), nullptr);
}

}  // namespace

}  // namespace Zorv::Formulas
