#include "Formulas/Lookups/LookupStore.h"

#include <cstddef>
#include <memory>
#include <new>
#include <stdexcept>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

class FakeIndex final : public LookupIndex {
public:
  explicit FakeIndex(std::size_t memory) : _memory(memory) {}
  [[nodiscard]] std::size_t memory() const noexcept override { return _memory; }

private:
  std::size_t _memory;
};

LookupKey keyOf(std::uint32_t row) {
  TableArea area;
  area.firstRow = row;
  LookupKey key;
  key.areas.push_back(area);
  return key;
}

/// Asks a store, and counts how many indexes it has made.
class LookupStoreTest : public testing::Test {
protected:
  LookupIndex const* ask(LookupStore& store, std::uint32_t row,
                         LookupStore::Effort effort = {.spared = 100, .price = 100}) {
    return store.obtain(keyOf(row), effort,
                        [this](SharedWork&) -> std::unique_ptr<LookupIndex const> {
                          ++made;
                          if (throws) {
                            throw std::bad_alloc();
                          }
                          return std::make_unique<FakeIndex>(memoryOfIndex);
                        });
  }

  int made = 0;
  std::size_t memoryOfIndex = 10'000;
  bool throws = false;
};

TEST_F(LookupStoreTest, MakesAnIndexOnceAtTheThirdTimeOfAsking) {
  LookupStore store;
  EXPECT_EQ(ask(store, 1), nullptr);
  EXPECT_EQ(ask(store, 1), nullptr);
  LookupIndex const* const index = ask(store, 1);
  EXPECT_NE(index, nullptr);
  EXPECT_EQ(ask(store, 1), index);
  EXPECT_EQ(made, 1);
}

TEST_F(LookupStoreTest, WaitsUntilTheIndexWouldHaveSparedItsPrice) {
  LookupStore store;
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(ask(store, 1, {.spared = 10, .price = 100}), nullptr);
  }
  EXPECT_NE(ask(store, 1, {.spared = 10, .price = 100}), nullptr);
}

TEST_F(LookupStoreTest, KeysAreKeptApart) {
  LookupStore store;
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ask(store, 1), nullptr);
    EXPECT_EQ(ask(store, 2), nullptr);
  }
  LookupIndex const* const first = ask(store, 1);
  LookupIndex const* const second = ask(store, 2);
  EXPECT_NE(first, nullptr);
  EXPECT_NE(second, nullptr);
  EXPECT_NE(first, second);
  EXPECT_NE(keyOf(1), keyOf(2));
}

TEST_F(LookupStoreTest, RangesThatMoveMakeNothing) {
  LookupStore store;
  for (std::uint32_t row = 0; row < 10'000; ++row) {
    EXPECT_EQ(ask(store, row), nullptr);
    EXPECT_EQ(ask(store, row), nullptr);
  }
  EXPECT_EQ(made, 0);
  // One that stays is found among them.
  for (int i = 0; i < 2; ++i) {
    EXPECT_EQ(ask(store, 20'000), nullptr);
  }
  EXPECT_NE(ask(store, 20'000), nullptr);
}

TEST_F(LookupStoreTest, MakesNothingThatDoesNotFit) {
  LookupStore store(1000);
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(ask(store, 1), nullptr);
  }
  EXPECT_EQ(made, 0);
}

TEST_F(LookupStoreTest, WhatIsMadeCounts) {
  LookupStore store(50'000);
  memoryOfIndex = 20'000;
  std::uint32_t ready = 0;
  for (std::uint32_t row = 0; row < 10; ++row) {
    for (int i = 0; i < 3; ++i) {
      ready += ask(store, row) != nullptr ? 1 : 0;
    }
  }
  // While it is made an index counts as what it may need at most.
  EXPECT_EQ(ready, 2U);
}

TEST_F(LookupStoreTest, DoesWithoutAnIndexForWhichTheMemoryDidNotSuffice) {
  LookupStore store;
  throws = true;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(ask(store, 1), nullptr);
  }
  EXPECT_EQ(made, 1);
}

TEST_F(LookupStoreTest, OtherFailuresReachTheCallerOnce) {
  LookupStore store(80'000);
  auto const fail = [&](SharedWork&) -> std::unique_ptr<LookupIndex const> {
    ++made;
    throw std::runtime_error("broken");
  };
  for (std::uint32_t row = 0; row < 10; ++row) {
    for (int i = 0; i < 2; ++i) {
      EXPECT_EQ(ask(store, row), nullptr);
    }
    // The memory that the others were to take is there again.
    EXPECT_THROW(static_cast<void>(store.obtain(keyOf(row), {.spared = 100, .price = 100}, fail)),
                 std::runtime_error);
    EXPECT_EQ(ask(store, row), nullptr);
  }
  EXPECT_EQ(made, 10);
}

TEST_F(LookupStoreTest, WhoAsksWhileItIsMadeIsNotHeldUp) {
  for (bool const isShared : {false, true}) {
    LookupStore store;
    LookupStore::Effort const effort{.spared = 100, .price = 100, .isShared = isShared};
    static_cast<void>(ask(store, 1, effort));
    static_cast<void>(ask(store, 1, effort));
    LookupIndex const* meanwhile = nullptr;
    auto const* const index = store.obtain(keyOf(1), effort, [&](SharedWork& work) {
      meanwhile = ask(store, 1, effort);
      work.run(1, [&](std::size_t) { EXPECT_EQ(ask(store, 1, effort), nullptr); });
      return std::make_unique<FakeIndex>(memoryOfIndex);
    });
    EXPECT_NE(index, nullptr);
    EXPECT_EQ(meanwhile, nullptr);
    EXPECT_EQ(made, 0);
  }
}

}  // namespace

}  // namespace Zorv::Formulas
