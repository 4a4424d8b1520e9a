#include "Formulas/Lookups/HashIndex.h"

#include <cstddef>
#include <cstdint>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

constexpr std::uint32_t entryCount = 1000;

/// Things of which each ten share a hash, and which equal their indexes.
std::uint32_t getOrCreate(HashIndex& indexes, std::uint32_t thing) {
  return indexes.getOrCreate(thing / 10, [&](std::uint32_t index) { return index == thing; });
}

std::uint32_t find(HashIndex const& indexes, std::uint32_t thing) {
  return indexes.find(thing / 10, [&](std::uint32_t index) { return index == thing; });
}

void expectAll(HashIndex const& indexes) {
  for (std::uint32_t thing = 0; thing < entryCount; ++thing) {
    ASSERT_EQ(find(indexes, thing), thing);
  }
  EXPECT_EQ(find(indexes, entryCount), HashIndex::none);
  EXPECT_EQ(indexes.size(), entryCount);
}

TEST(HashIndex, IndexesCountInTheOrderOfAdding) {
  HashIndex indexes;
  EXPECT_EQ(find(indexes, 0), HashIndex::none);
  for (std::uint32_t thing = 0; thing < entryCount; ++thing) {
    ASSERT_EQ(getOrCreate(indexes, thing), thing);
    ASSERT_EQ(getOrCreate(indexes, thing), thing);
  }
  expectAll(indexes);
}

TEST(HashIndex, ShrinkingGivesRoomBack) {
  HashIndex indexes;
  constexpr std::size_t room = 100'000;
  indexes.reserve(room);
  std::size_t const before = indexes.memory();
  EXPECT_GE(before, room * 16);
  for (std::uint32_t thing = 0; thing < entryCount; ++thing) {
    ASSERT_EQ(getOrCreate(indexes, thing), thing);
  }
  EXPECT_EQ(indexes.memory(), before);
  indexes.shrink();
  EXPECT_LE(indexes.memory(), entryCount * 32);
  expectAll(indexes);
  ASSERT_EQ(getOrCreate(indexes, entryCount), entryCount);
}

}  // namespace

}  // namespace Zorv::Formulas
