// Threads that ask a store for an index while another one makes it.

#include "Formulas/Lookups/LookupStore.h"

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

class FakeIndex final : public LookupIndex {
public:
  [[nodiscard]] std::size_t memory() const noexcept override { return 1000; }
};

constexpr LookupStore::Effort sharedEffort = {.spared = 100, .price = 100, .isShared = true};

std::unique_ptr<LookupIndex const> makeFake(SharedWork& /*work*/) {
  return std::make_unique<FakeIndex const>();
}

LookupIndex const* ask(LookupStore& store, LookupStore::Make const& make) {
  return store.obtain(LookupKey(), sharedEffort, make);
}

/// What two threads were given; see makeTogether().
struct Given {
  LookupIndex const* maker = nullptr;
  LookupIndex const* helper = nullptr;
};

/// Has one thread make an index of two parts, each of which waits for the other to be in hand, and
/// another one ask for it meanwhile; `end(work)` ends the making.
void makeTogether(LookupStore& store, LookupStore::Make const& end, Given& given) {
  EXPECT_EQ(ask(store, makeFake), nullptr);
  EXPECT_EQ(ask(store, makeFake), nullptr);
  FakeIndex const notAskedYet;
  given.helper = &notAskedYet;
  std::jthread helper;
  std::barrier bothAreAtWork(2);
  given.maker = ask(store, [&](SharedWork& work) {
    helper = std::jthread([&] { given.helper = ask(store, makeFake); });
    work.run(2, [&](std::size_t) { bothAreAtWork.arrive_and_wait(); });
    return end(work);
  });
}

TEST(LookupStoreConcurrency, WhoAsksForAnIndexInTheMakingHelpsAndGetsIt) {
  LookupStore store;
  Given given;
  makeTogether(store, makeFake, given);
  EXPECT_NE(given.maker, nullptr);
  EXPECT_EQ(given.helper, given.maker);
  EXPECT_EQ(ask(store, makeFake), given.maker);
}

/// Ends a making by an exception of some kind, in a part or between them.
template <class Failure>
LookupStore::Make failBy(Failure const& failure, bool inAPart) {
  return [=](SharedWork& work) -> std::unique_ptr<LookupIndex const> {
    if (!inAPart) {
      throw Failure(failure);
    }
    work.run(2, [&](std::size_t) { throw Failure(failure); });
    return std::make_unique<FakeIndex const>();
  };
}

TEST(LookupStoreConcurrency, AHelperIsSentAwayWhenTheMemoryDoesNotSuffice) {
  for (bool const inAPart : {false, true}) {
    LookupStore store;
    Given given;
    makeTogether(store, failBy(std::bad_alloc(), inAPart), given);
    EXPECT_EQ(given.maker, nullptr);
    EXPECT_EQ(given.helper, nullptr);
    EXPECT_EQ(ask(store, makeFake), nullptr);
  }
}

TEST(LookupStoreConcurrency, OtherFailuresReachTheMakerAndSendTheHelperAway) {
  for (bool const inAPart : {false, true}) {
    LookupStore store;
    Given given;
    EXPECT_THROW(makeTogether(store, failBy(std::runtime_error("broken"), inAPart), given),
                 std::runtime_error);
    EXPECT_EQ(given.helper, nullptr);
    EXPECT_EQ(ask(store, makeFake), nullptr);
  }
}

/// Each has a part of the other's index in hand: neither may wait.
TEST(LookupStoreConcurrency, AThreadAtWorkOnAnIndexWaitsForNoOther) {
  LookupStore store;
  LookupKey const other(LookupKind::Order, Few<TableArea>());
  LookupKey const one(LookupKind::ValueClasses, Few<TableArea>());
  std::barrier bothAreAtWork(2);
  auto const makeAskingFor = [&](LookupKey const& key) {
    return [&, key](SharedWork& work) {
      work.run(1, [&](std::size_t) {
        bothAreAtWork.arrive_and_wait();
        EXPECT_EQ(store.obtain(key, sharedEffort, makeFake), nullptr);
        bothAreAtWork.arrive_and_wait();
      });
      return std::make_unique<FakeIndex const>();
    };
  };
  for (LookupKey const& key : {one, other}) {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(store.obtain(key, sharedEffort, makeFake), nullptr);
    }
  }
  std::jthread const thread(
      [&] { EXPECT_NE(store.obtain(other, sharedEffort, makeAskingFor(one)), nullptr); });
  EXPECT_NE(store.obtain(one, sharedEffort, makeAskingFor(other)), nullptr);
}

}  // namespace

}  // namespace Zorv::Formulas
