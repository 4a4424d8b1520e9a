#include "Formulas/Lookups/LookupMap.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

class FakeIndex {
public:
  using Key = std::uint32_t;

  explicit FakeIndex(std::size_t memory) : _memory(memory) {}
  [[nodiscard]] std::size_t memory() const noexcept { return _memory; }
  void grow(std::size_t bytes) { _memory += bytes; }

private:
  std::size_t _memory;
};

/// A map under a budget of its own.
class FakeMap {
public:
  explicit FakeMap(std::size_t limit = LookupBudget::defaultLimit)
      : _budget(limit), _map(_budget) {}

  FakeIndex const* getOrCreate(std::uint32_t key, LookupCost cost,
                               LookupMap<FakeIndex>::Build const& build) {
    return _map.getOrCreate(key, cost, build);
  }
  /// Has the index of a key follow a change.
  template <class Follow>
  void follow(std::uint32_t key, Follow const& follow) {
    _map.followIf([&](std::uint32_t other) { return other == key; },
                  [&](std::uint32_t /*key*/, FakeIndex& index) { return follow(index); });
  }
  [[nodiscard]] FakeIndex const* find(std::uint32_t key) { return _map.find(key); }

private:
  LookupBudget _budget;
  LookupMap<FakeIndex> _map;
};

/// Asks a map, and counts how many indexes it has built.
class LookupMapTest : public testing::Test {
protected:
  FakeIndex const* ask(FakeMap& map, std::uint32_t key,
                       LookupCost cost = {.saved = 100, .build = 100}) {
    return map.getOrCreate(key, cost, [this](SharedWork&) -> std::unique_ptr<FakeIndex> {
      ++built;
      if (throws) {
        throw std::bad_alloc();
      }
      return std::make_unique<FakeIndex>(memoryOfIndex);
    });
  }

  int built = 0;
  std::size_t memoryOfIndex = 10'000;
  bool throws = false;
};

TEST_F(LookupMapTest, BuildsAnIndexOnceAtTheThirdUse) {
  FakeMap map;
  EXPECT_EQ(ask(map, 1), nullptr);
  EXPECT_EQ(ask(map, 1), nullptr);
  FakeIndex const* const index = ask(map, 1);
  EXPECT_NE(index, nullptr);
  EXPECT_EQ(ask(map, 1), index);
  EXPECT_EQ(built, 1);
}

TEST_F(LookupMapTest, WaitsUntilTheIndexWouldHaveSavedItsCost) {
  FakeMap map;
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(ask(map, 1, {.saved = 10, .build = 100}), nullptr);
  }
  EXPECT_NE(ask(map, 1, {.saved = 10, .build = 100}), nullptr);
}

TEST_F(LookupMapTest, KeysAreKeptApart) {
  FakeMap map;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ask(map, 1), nullptr);
    EXPECT_EQ(ask(map, 2), nullptr);
  }
  FakeIndex const* const first = ask(map, 1);
  FakeIndex const* const second = ask(map, 2);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_NE(first, second);
}

TEST_F(LookupMapTest, KeysThatAreAskedForTwiceBuildNothing) {
  FakeMap map;
  for (std::uint32_t key = 0; key < 10'000; ++key) {
    EXPECT_EQ(ask(map, key), nullptr);
    EXPECT_EQ(ask(map, key), nullptr);
  }
  EXPECT_EQ(built, 0);
  // One that is asked for again is found among them.
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ask(map, 20'000), nullptr);
  }
  EXPECT_NE(ask(map, 20'000), nullptr);
}

TEST_F(LookupMapTest, BuildsNothingThatDoesNotFit) {
  FakeMap map(1000);
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(ask(map, 1), nullptr);
  }
  EXPECT_EQ(built, 0);
}

TEST_F(LookupMapTest, BuiltIndexesCount) {
  FakeMap map(50'000);
  memoryOfIndex = 20'000;
  std::uint32_t ready = 0;
  for (std::uint32_t key = 0; key < 10; ++key) {
    for (int i = 0; i < 3; ++i) {
      ready += ask(map, key) != nullptr ? 1 : 0;
    }
  }
  // While it is built an index counts as what it may need at most.
  EXPECT_EQ(ready, 2U);
}

TEST_F(LookupMapTest, DoesWithoutAnIndexForWhichTheMemoryDidNotSuffice) {
  FakeMap map;
  throws = true;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(ask(map, 1), nullptr);
  }
  EXPECT_EQ(built, 1);
}

TEST_F(LookupMapTest, OtherFailuresReachTheCallerOnce) {
  FakeMap map(80'000);
  auto const fail = [&](SharedWork&) -> std::unique_ptr<FakeIndex> {
    ++built;
    throw std::runtime_error("broken");
  };
  for (std::uint32_t key = 0; key < 10; ++key) {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(ask(map, key), nullptr);
    }
    // The memory that the others were to take is there again.
    EXPECT_THROW(static_cast<void>(map.getOrCreate(key, {.saved = 100, .build = 100}, fail)),
                 std::runtime_error);
    EXPECT_EQ(ask(map, key), nullptr);
  }
  EXPECT_EQ(built, 10);
}

TEST_F(LookupMapTest, AskingWhileItIsBuiltDoesNotWait) {
  for (bool const isShared : {false, true}) {
    FakeMap map;
    LookupCost const cost{.saved = 100, .build = 100, .isShared = isShared};
    static_cast<void>(ask(map, 1, cost));
    static_cast<void>(ask(map, 1, cost));
    FakeIndex const* meanwhile = nullptr;
    auto const* const index = map.getOrCreate(1, cost, [&](SharedWork& work) {
      meanwhile = ask(map, 1, cost);
      work.run(1, [&](std::size_t) { EXPECT_EQ(ask(map, 1, cost), nullptr); });
      return std::make_unique<FakeIndex>(memoryOfIndex);
    });
    EXPECT_NE(index, nullptr);
    EXPECT_EQ(meanwhile, nullptr);
    EXPECT_EQ(built, 0);
  }
}

TEST_F(LookupMapTest, KeepsAnIndexThatFollowsAChange) {
  FakeMap map;
  EXPECT_EQ(map.find(1), nullptr);
  for (int i = 0; i < 3; ++i) {
    static_cast<void>(ask(map, 1));
    static_cast<void>(ask(map, 2));
  }
  FakeIndex const* const index = map.find(1);
  ASSERT_NE(index, nullptr);
  map.follow(1, [](FakeIndex& followed) {
    followed.grow(1);
    return true;
  });
  EXPECT_EQ(map.find(1), index);
  EXPECT_EQ(index->memory(), memoryOfIndex + 1);
  EXPECT_EQ(map.find(2)->memory(), memoryOfIndex);
}

TEST_F(LookupMapTest, ForgetsAnIndexThatDoesNotFollowAChange) {
  FakeMap map;
  for (int kind = 0; kind < 2; ++kind) {
    while (ask(map, 1) == nullptr) {
    }
    map.follow(1, [&](FakeIndex& /*index*/) {
      if (kind == 1) {
        throw std::bad_alloc();
      }
      return false;
    });
    EXPECT_EQ(map.find(1), nullptr);
  }
  EXPECT_NE(ask(map, 1), nullptr) << "it did pay before";
  EXPECT_EQ(built, 3);
}

TEST_F(LookupMapTest, ForgetsAnIndexThatGrowsBeyondTheBudget) {
  FakeMap map(50'000);
  for (int i = 0; i < 3; ++i) {
    static_cast<void>(ask(map, 1));
  }
  auto const growBy = [&](std::size_t bytes) {
    map.follow(1, [&](FakeIndex& index) {
      index.grow(bytes);
      return true;
    });
  };
  growBy(20'000);
  ASSERT_NE(map.find(1), nullptr);
  EXPECT_EQ(ask(map, 2), nullptr);
  EXPECT_EQ(ask(map, 2), nullptr);
  EXPECT_NE(ask(map, 2, {.saved = 100, .build = 50}), nullptr) << "there is room for some more";
  growBy(20'000);
  EXPECT_EQ(map.find(1), nullptr);
  EXPECT_NE(ask(map, 1), nullptr) << "its memory was given back";
}

}  // namespace

}  // namespace Zorv::Formulas
