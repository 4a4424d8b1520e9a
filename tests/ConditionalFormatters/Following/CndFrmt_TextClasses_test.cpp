#include "ConditionalFormatters/Following/CndFrmt_TextClasses.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::ConditionalFormatters {
namespace {

/// Of all texts that are equal without regard to the letter case of their first character.
std::uint32_t hashOfTail(std::string_view text) { return TextClasses::hashOf(text.substr(1)); }

std::uint64_t countOfHash(TextClasses const& classes, std::uint32_t hash) {
  std::uint64_t total = 0;
  classes.forEachOfHash(hash,
                        [&](std::string_view /*text*/, std::uint64_t count) { total += count; });
  return total;
}

class TextClassesTest : public testing::Test {
protected:
  TextClasses::Index get(std::string_view text) {
    return classes.getOrCreate(text, TextClasses::hashOf(text)).value();
  }

  TextClasses classes;
};

TEST_F(TextClassesTest, KeepEachTextOnceForAsLongAsCellsHaveIt) {
  auto const a = get("a");
  EXPECT_EQ(classes.add(a, 10).count, 0U);
  auto const b = get("B");
  EXPECT_NE(a, b);
  EXPECT_EQ(classes.add(b, 20).count, 0U);
  EXPECT_EQ(get("a"), a);
  EXPECT_EQ(classes.at(a), "a");
  EXPECT_EQ(classes.size(), 2U);
  auto others = classes.add(a, 30);
  EXPECT_EQ(others.count, 1U);
  EXPECT_EQ(others.only, 10U);
  others = classes.remove(a, 10);
  EXPECT_EQ(others.count, 1U);
  EXPECT_EQ(others.only, 30U);
  EXPECT_EQ(classes.remove(a, 30).count, 0U);
  EXPECT_EQ(classes.size(), 1U);
  EXPECT_EQ(classes.at(b), "B");
  EXPECT_EQ(get("c"), a) << "the index is used again";
  EXPECT_NE(get("a"), a);
}

TEST_F(TextClassesTest, FindTheTextsOfAHash) {
  EXPECT_EQ(countOfHash(classes, hashOfTail("total")), 0U) << "there is no text yet";
  for (char const* const text : {"total", "Total", "other"}) {
    auto const index = classes.getOrCreate(text, hashOfTail(text)).value();
    static_cast<void>(classes.add(index, 1));
    static_cast<void>(classes.add(index, 2));
  }
  EXPECT_EQ(classes.size(), 3U) << "texts of one hash are told from each other";
  EXPECT_EQ(countOfHash(classes, hashOfTail("TOTAL")), 0U);
  EXPECT_EQ(countOfHash(classes, hashOfTail("total")), 4U);
  EXPECT_EQ(countOfHash(classes, hashOfTail("other")), 2U);
}

TEST_F(TextClassesTest, TakeTenBytesForATextBesideItsRecord) {
  constexpr std::size_t count = 100'000;
  std::size_t bytes = 0;
  for (int round = 0; round < 3; ++round) {
    std::vector<TextClasses::Index> indices;
    for (std::size_t text = 100'000; text < 100'000 + count; ++text) {
      indices.push_back(get("Item " + std::to_string(text)));
      static_cast<void>(classes.add(indices.back(), text));
    }
    EXPECT_LT(classes.countBytes(), (32 + 11) * count);
    EXPECT_TRUE(round == 0 || classes.countBytes() == bytes) << "room is used again";
    bytes = classes.countBytes();
    for (std::size_t text = 0; text < count; ++text) {
      ASSERT_EQ(classes.remove(indices[text], 100'000 + text).count, 0U);
    }
  }
}

TEST_F(TextClassesTest, FollowRandomEdits) {
  std::mt19937 random(2);
  std::map<std::string, std::multiset<CellIdentity>> plain;
  std::vector<std::pair<std::string, CellIdentity>> cells;
  for (int step = 0; step < 40'000; ++step) {
    // Grows over several sizes of the tables, and then shrinks to nothing.
    if (cells.empty() || random() % 10 < (step < 24'000 ? 8U : 2U)) {
      std::string text = std::to_string(random() % 6'000);
      text.resize(text.size() + random() % 3 * 24, 'x');
      CellIdentity const cell = random() % 1'000'000;
      auto& same = plain[text];
      auto const others = classes.add(get(text), cell);
      ASSERT_EQ(others.count, same.size());
      ASSERT_TRUE(others.count != 1 || others.only == *same.begin());
      same.insert(cell);
      cells.emplace_back(std::move(text), cell);
    } else {
      std::swap(cells[random() % cells.size()], cells.back());
      auto const [text, cell] = cells.back();
      auto const same = plain.find(text);
      same->second.erase(same->second.find(cell));
      ASSERT_EQ(classes.at(get(text)), text);
      auto const others = classes.remove(get(text), cell);
      ASSERT_EQ(others.count, same->second.size());
      ASSERT_TRUE(others.count != 1 || others.only == *same->second.begin());
      if (same->second.empty()) {
        plain.erase(same);
      }
      cells.pop_back();
    }
    ASSERT_EQ(classes.size(), plain.size());
  }
}

TEST_F(TextClassesTest, TakeNoMoreTextsOfOneHash) {
  std::size_t taken = 0;
  while (taken < 1'000 && classes.getOrCreate(std::to_string(taken), 7)) {
    ++taken;
  }
  EXPECT_EQ(taken, 512U);
  EXPECT_TRUE(classes.getOrCreate("0", 7)) << "it is there";
  EXPECT_TRUE(classes.getOrCreate("another text", 8));
}

/// Hashes as they are would put these at neighbouring places.
TEST_F(TextClassesTest, TakeTextsWhoseHashesDifferInAFewBits) {
  constexpr std::uint32_t count = 20'000;
  for (std::uint32_t text = 0; text < count; ++text) {
    ASSERT_TRUE(classes.getOrCreate(std::to_string(text), text << 14U)) << text;
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
