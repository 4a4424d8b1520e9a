#include "ConditionalFormatters/Formats/CndFrmt_ColumnFormats.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <random>
#include <vector>

namespace Zorv::ConditionalFormatters {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr ColumnInterval interval(unsigned long first, unsigned long end) { return {first, end}; }

TEST(ColumnFormats, BeginsEmpty) {
  std::vector<unsigned long> const borders{3, 5, 9};
  ColumnFormats const formats(borders);
  EXPECT_EQ(formats.width(), 0U);
  EXPECT_THAT(formats.list(), IsEmpty());
}

TEST(ColumnFormats, JoinsIntervalsThatTouchAndKeepsOthersApart) {
  std::vector<unsigned long> const borders{0, 2, 4, 7, 9, 20};
  ColumnFormats formats(borders);
  formats.add({0, 2}, 0);
  formats.add({2, 4}, 0);
  formats.add({7, 20}, 0);
  EXPECT_EQ(formats.width(), 17U);
  EXPECT_THAT(formats.list(), ElementsAre(interval(0, 4), interval(7, 20)));
}

TEST(ColumnFormats, AColumnIsCoveredUntilItsLastIntervalIsRemoved) {
  std::vector<unsigned long> const borders{0, 3, 6, 9};
  ColumnFormats formats(borders);
  formats.add({0, 6}, 0);
  formats.add({3, 9}, 0);
  formats.add({3, 9}, 0);
  EXPECT_THAT(formats.list(), ElementsAre(interval(0, 9)));
  formats.remove({3, 9}, 0);
  EXPECT_THAT(formats.list(), ElementsAre(interval(0, 9)));
  formats.remove({0, 6}, 0);
  EXPECT_THAT(formats.list(), ElementsAre(interval(3, 9)));
  formats.remove({3, 9}, 0);
  EXPECT_EQ(formats.width(), 0U);
  EXPECT_THAT(formats.list(), IsEmpty());
}

TEST(ColumnFormats, CoversWhatACountOfEachColumnCovers) {
  constexpr std::size_t columns = 24;
  for (unsigned seed = 0; seed < 40; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 random(seed);
    std::vector<unsigned long> borders;
    for (unsigned long column = 0; column <= columns; ++column) {
      if (column % (1 + seed % 3) == 0) {
        borders.push_back(column);
      }
    }
    ColumnFormats formats(borders);
    std::array<int, columns> counts{};
    std::vector<ColumnInterval> added;
    for (int step = 0; step < 60; ++step) {
      bool const adds = added.empty() || random() % 2 == 0;
      std::size_t const place = adds ? 0 : random() % added.size();
      auto const first = random() % (borders.size() - 1);
      auto const end = first + 1 + random() % (borders.size() - 1 - first);
      ColumnInterval const changed =
          adds ? ColumnInterval{borders[first], borders[end]} : added[place];
      if (adds) {
        formats.add(changed, 0);
        added.push_back(changed);
      } else {
        formats.remove(changed, 0);
        added.erase(added.begin() + static_cast<std::ptrdiff_t>(place));
      }
      for (auto column = changed.first; column < changed.end; ++column) {
        counts[column] += adds ? 1 : -1;
      }

      std::vector<ColumnInterval> expected;
      unsigned long width = 0;
      for (unsigned long column = 0; column < columns; ++column) {
        if (counts[column] > 0) {
          ++width;
          if (!expected.empty() && expected.back().end == column) {
            ++expected.back().end;
          } else {
            expected.push_back({column, column + 1});
          }
        }
      }
      EXPECT_EQ(formats.list(), expected);
      EXPECT_EQ(formats.width(), width);
    }
  }
}

TEST(ColumnFormats, FindsTheFormatsOfAColumnAndCountsItsIntervals) {
  std::vector<unsigned long> const borders{0, 3, 6, 9};
  ColumnFormats formats(borders);
  formats.add({0, 9}, 7);
  formats.add({0, 6}, 2);
  formats.add({3, 9}, 7);
  formats.add({3, 6}, 4);
  ColumnFormats::Cover cover;
  formats.find(0, cover);
  EXPECT_THAT(cover.formats, ElementsAre(2, 7));
  EXPECT_EQ(cover.intervalCount, 2U);
  formats.find(1, cover);
  EXPECT_THAT(cover.formats, ElementsAre(2, 4, 7));
  EXPECT_EQ(cover.intervalCount, 4U);
  formats.remove({0, 9}, 7);
  formats.find(1, cover);
  EXPECT_THAT(cover.formats, ElementsAre(2, 4, 7));
  EXPECT_EQ(cover.intervalCount, 3U);
  formats.find(0, cover);
  EXPECT_THAT(cover.formats, ElementsAre(2));
  formats.remove({0, 6}, 2);
  formats.find(0, cover);
  EXPECT_THAT(cover.formats, IsEmpty());
  EXPECT_EQ(cover.intervalCount, 0U);
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
