#include "render/Build/AreaSweep.h"

#include <chrono>
#include <string>

#include <gtest/gtest.h>

namespace Zorv::Render {
namespace {

/// The areas of a grid, one digit for each position; `.` for none.
std::string sweep(std::vector<PictureArea> areas, std::uint32_t rows, std::uint32_t columns) {
  AreaSweep sweep(std::move(areas), columns);
  std::string text;
  for (std::uint32_t row = 0; row < rows; ++row) {
    static_cast<void>(sweep.advance(row));
    for (std::uint32_t column = 0; column < columns; ++column) {
      auto const* const area = sweep.find(column);
      text += area != nullptr ? static_cast<char>('0' + area->index) : '.';
    }
    text += '/';
  }
  return text;
}

TEST(AreaSweep, FindsTheAreaOfEachPosition) {
  EXPECT_EQ(sweep({{0, 2, 1, 3, 0}, {2, 3, 0, 2, 1}, {1, 3, 3, 4, 2}}, 3, 4), ".00./.002/11.2/");
}

TEST(AreaSweep, AreasBeginOneBelowTheOther) {
  EXPECT_EQ(sweep({{0, 1, 0, 2, 0}, {1, 2, 0, 1, 1}, {1, 2, 1, 2, 2}, {2, 3, 0, 2, 3}}, 3, 2),
            "00/12/33/");
}

TEST(AreaSweep, OfOverlappingAreasTheUpperOneThenTheLeftOneCounts) {
  EXPECT_EQ(sweep({{1, 3, 0, 3, 0}, {0, 2, 1, 2, 1}}, 3, 3), ".1./.1./.../");
  EXPECT_EQ(sweep({{0, 1, 1, 3, 0}, {0, 1, 0, 2, 1}}, 1, 3), "11./");
  EXPECT_EQ(sweep({{0, 1, 0, 2, 0}, {0, 1, 0, 1, 1}}, 1, 2), "00/");
  EXPECT_EQ(AreaSweep({{0, 1, 0, 2, 0}, {0, 1, 0, 1, 1}, {0, 1, 1, 3, 2}}, 3).getOverlapCount(),
            2U);
}

TEST(AreaSweep, EmptyAreasAreNoAreas) {
  EXPECT_EQ(sweep({{0, 0, 0, 2, 0}, {0, 1, 1, 1, 1}}, 1, 2), "../");
  EXPECT_EQ(AreaSweep({{0, 0, 0, 2, 0}}, 2).getOverlapCount(), 0U);
}

TEST(AreaSweep, ManyWideAreasThatOverlapTakeNoLongTime) {
  std::vector<PictureArea> areas{{0, 1, 16'383, 16'384, 0}};
  for (std::size_t i = 1; i < 200'000; ++i) {
    areas.push_back({0, 1, 0, 16'384, i});
  }
  auto const start = std::chrono::steady_clock::now();
  AreaSweep const sweep(std::move(areas), 16'384);
  EXPECT_EQ(sweep.getOverlapCount(), 199'999U);
  EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(30));
}

}  // namespace
}  // namespace Zorv::Render
