#include "Formulas/Lookups/ListEdits.h"

#include <cstddef>
#include <cstdint>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

using Numbers = std::vector<std::uint32_t>;
using Edits = std::vector<ListEdit<std::uint32_t>>;

Numbers applyOneByOne(Numbers list, Edits const& edits) {
  for (std::size_t index = edits.size(); index > 0; --index) {
    auto const& edit = edits[index - 1];
    if (edit.isInsertion) {
      list.insert(list.begin() + edit.at, edit.value);
    } else {
      list.erase(list.begin() + edit.at);
    }
  }
  return list;
}

TEST(ListEdits, AreMadeAtOnce) {
  Numbers list{0, 1, 2, 3, 4};
  Edits const edits{{0, true, 10}, {1, true, 11}, {1, true, 12},
                    {1, false},    {4, false},    {5, true, 13}};
  applyEdits<Numbers>(list, edits);
  EXPECT_EQ(list, (Numbers{10, 0, 11, 12, 2, 3, 13}));
}

TEST(ListEdits, AreThoseThatAreMadeOneByOne) {
  std::mt19937 random(5);
  for (int round = 0; round < 2'000; ++round) {
    Numbers list(random() % 30);
    std::iota(list.begin(), list.end(), 0U);
    Edits edits;
    auto const mostKinds = 1 + random() % 3;  // some rounds are of insertions or of removals
    for (std::uint32_t at = 0; at <= list.size(); ++at) {
      for (auto count = random() % 4; mostKinds != 2 && count == 3; count = random() % 4) {
        edits.push_back({at, true, 100 + at});
      }
      if (mostKinds != 1 && at < list.size() && random() % 4 == 0) {
        edits.push_back({at, false});
      }
    }
    auto const expected = applyOneByOne(list, edits);
    applyEdits<Numbers>(list, edits);
    ASSERT_EQ(list, expected) << "in round " << round;
  }
}

TEST(ListEdits, TakeLittleMoreRoomThanTheList) {
  Numbers list(1'600);
  list.shrink_to_fit();
  applyEdits<Numbers>(list, Edits{{800, true, 7}});
  EXPECT_EQ(list.size(), 1'601U);
  EXPECT_LE(list.capacity(), 1'800U);
}

}  // namespace

}  // namespace Zorv::Formulas
