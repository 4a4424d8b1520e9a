#include "ConditionalFormatters/Following/CndFrmt_TextPool.h"

#include <cstddef>
#include <functional>
#include <map>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ConditionalFormatters/TextsOfOneHash.h"

namespace Zorv::ConditionalFormatters {
namespace {

TEST(TextPool, KeepsEachTextOnceForAsLongAsItIsUsed) {
  TextPool pool;
  auto const a = pool.acquire("a").value();
  auto const b = pool.acquire("B").value();
  EXPECT_NE(a, b);
  EXPECT_EQ(pool.acquire("a"), a);
  EXPECT_EQ(pool.countUses("a"), 2U);
  EXPECT_EQ(pool.countUses("c"), 0U);
  EXPECT_EQ(TextPool().countUses("a"), 0U);
  EXPECT_EQ(pool.at(a), "a");
  EXPECT_EQ(pool.size(), 2U);
  pool.release(a);
  EXPECT_EQ(pool.acquire("a"), a);
  pool.release(a);
  pool.release(a);
  EXPECT_EQ(pool.size(), 1U);
  EXPECT_EQ(pool.at(b), "B");
  EXPECT_EQ(pool.acquire("a"), a) << "the index is used again";
  EXPECT_NE(pool.acquire("c"), b);
}

TEST(TextPool, TakesAboutFiftyBytesForATextAndUsesThemAgain) {
  constexpr std::size_t count = 100'000;
  TextPool pool;
  std::size_t bytes = 0;
  for (int round = 0; round < 3; ++round) {
    std::vector<TextPool::Index> indices;
    for (std::size_t text = 0; text < count; ++text) {
      indices.push_back(pool.acquire("Item " + std::to_string(text)).value());
    }
    EXPECT_LT(pool.countBytes(), 60 * count);
    EXPECT_TRUE(round == 0 || pool.countBytes() == bytes);
    bytes = pool.countBytes();
    for (TextPool::Index const index : indices) {
      pool.release(index);
    }
  }
}

TEST(TextPool, FollowsRandomUse) {
  std::mt19937 random(2);
  TextPool pool;
  std::map<std::string, std::pair<TextPool::Index, unsigned>> plain;
  for (int step = 0; step < 40'000; ++step) {
    std::string const text = "text " + std::to_string(random() % (step < 20'000 ? 3'000 : 100));
    auto const found = plain.find(text);
    if (found == plain.end()) {
      plain[text] = {pool.acquire(text).value(), 1};
    } else if (random() % 2 == 0) {
      ASSERT_EQ(pool.acquire(text), found->second.first);
      ++found->second.second;
    } else {
      pool.release(found->second.first);
      if (--found->second.second == 0) {
        plain.erase(found);
      }
    }
    ASSERT_EQ(pool.size(), plain.size());
  }
  for (auto const& [text, use] : plain) {
    EXPECT_EQ(pool.at(use.first), text);
  }
}

TEST(TextPool, TakesNoMoreOfTextsThatCrowdAtOnePlace) {
  auto const texts = TestSupport::makeTextsOfOneHash(10);
  ASSERT_EQ(std::hash<std::string>()(texts.front()), std::hash<std::string>()(texts.back()));
  TextPool pool;
  std::size_t taken = 0;
  while (taken < texts.size() && pool.acquire(texts[taken])) {
    ++taken;
  }
  EXPECT_EQ(taken, 512U);
  EXPECT_TRUE(pool.acquire(texts.front()));
  EXPECT_TRUE(pool.acquire("another text"));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
