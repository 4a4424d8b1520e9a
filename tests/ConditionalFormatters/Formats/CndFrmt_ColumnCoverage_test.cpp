#include "ConditionalFormatters/Formats/CndFrmt_ColumnCoverage.h"

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

TEST(ColumnCoverage, BeginsEmpty) {
  ColumnCoverage const coverage({3, 5, 9});
  EXPECT_EQ(coverage.width(), 0U);
  EXPECT_THAT(coverage.list(), IsEmpty());
}

TEST(ColumnCoverage, JoinsIntervalsThatTouchAndKeepsOthersApart) {
  ColumnCoverage coverage({0, 2, 4, 7, 9, 20});
  coverage.add({0, 2});
  coverage.add({2, 4});
  coverage.add({7, 20});
  EXPECT_EQ(coverage.width(), 17U);
  EXPECT_THAT(coverage.list(), ElementsAre(interval(0, 4), interval(7, 20)));
}

TEST(ColumnCoverage, AColumnIsCoveredUntilItsLastIntervalIsRemoved) {
  ColumnCoverage coverage({0, 3, 6, 9});
  coverage.add({0, 6});
  coverage.add({3, 9});
  coverage.add({3, 9});
  EXPECT_THAT(coverage.list(), ElementsAre(interval(0, 9)));
  coverage.remove({3, 9});
  EXPECT_THAT(coverage.list(), ElementsAre(interval(0, 9)));
  coverage.remove({0, 6});
  EXPECT_THAT(coverage.list(), ElementsAre(interval(3, 9)));
  coverage.remove({3, 9});
  EXPECT_EQ(coverage.width(), 0U);
  EXPECT_THAT(coverage.list(), IsEmpty());
}

TEST(ColumnCoverage, CoversWhatACountOfEachColumnCovers) {
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
    ColumnCoverage coverage(borders);
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
        coverage.add(changed);
        added.push_back(changed);
      } else {
        coverage.remove(changed);
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
      EXPECT_EQ(coverage.list(), expected);
      EXPECT_EQ(coverage.width(), width);
    }
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
