#include "Formulas/Lookups/TextCopies.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

TEST(TextCopies, StayWhereTheyAre) {
  TextCopies copies;
  std::vector<std::string> texts;
  std::vector<std::string_view> views;
  std::size_t size = 0;
  for (std::size_t index = 0; index < 2'000; ++index) {
    texts.emplace_back(index % 100 == 7 ? 3'000 : index % 40, static_cast<char>('a' + index % 26));
    views.push_back(copies.add(texts.back()));
    size += texts.back().size();
  }
  TextCopies const moved = std::move(copies);
  for (std::size_t index = 0; index < texts.size(); ++index) {
    ASSERT_EQ(views[index], texts[index]);
    ASSERT_NE(views[index].data(), texts[index].data());
  }
  EXPECT_EQ(moved.size(), size);
  EXPECT_GE(moved.memory(), size);
  EXPECT_LE(moved.memory(), size + size / 8 + 4'096);
}

TEST(TextCopies, TakeNoMemoryWithoutTexts) {
  TextCopies const copies;
  EXPECT_EQ(copies.size(), 0U);
  EXPECT_EQ(copies.memory(), 0U);
}

}  // namespace

}  // namespace Zorv::Formulas
