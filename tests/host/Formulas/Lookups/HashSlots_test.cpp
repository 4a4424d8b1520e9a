#include "Formulas/Lookups/HashSlots.h"

#include <cstddef>
#include <cstdint>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

constexpr std::uint32_t count = 1000;

/// Things that are told by a hash which each ten of them share, and by their numbers.
std::uint32_t obtain(HashSlots& slots, std::uint32_t thing) {
  return slots.obtain(thing / 10, [&](std::uint32_t number) { return number == thing; });
}

std::uint32_t find(HashSlots const& slots, std::uint32_t thing) {
  return slots.find(thing / 10, [&](std::uint32_t number) { return number == thing; });
}

void expectAll(HashSlots const& slots) {
  for (std::uint32_t thing = 0; thing < count; ++thing) {
    ASSERT_EQ(find(slots, thing), thing);
  }
  EXPECT_EQ(find(slots, count), HashSlots::noNumber);
  EXPECT_EQ(slots.size(), count);
}

TEST(HashSlots, NumbersInTheOrderOfAddingAndFindsThem) {
  HashSlots slots;
  EXPECT_EQ(find(slots, 0), HashSlots::noNumber);
  for (std::uint32_t thing = 0; thing < count; ++thing) {
    ASSERT_EQ(obtain(slots, thing), thing);
    ASSERT_EQ(obtain(slots, thing), thing);
  }
  expectAll(slots);
}

TEST(HashSlots, RoomThatWasMadeIsGivenBack) {
  HashSlots slots;
  constexpr std::size_t room = 100'000;
  slots.reserve(room);
  std::size_t const before = slots.memory();
  EXPECT_GE(before, room * 16);
  for (std::uint32_t thing = 0; thing < count; ++thing) {
    ASSERT_EQ(obtain(slots, thing), thing);
  }
  EXPECT_EQ(slots.memory(), before);
  slots.shrink();
  EXPECT_LE(slots.memory(), count * 32);
  expectAll(slots);
  ASSERT_EQ(obtain(slots, count), count);
}

}  // namespace

}  // namespace Zorv::Formulas
