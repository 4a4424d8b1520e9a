#include "words/Amounts.h"

#include <vector>

#include <gtest/gtest.h>

namespace Zorv::Words {
namespace {

using std::chrono::milliseconds;

TEST(Amounts, SizesAreInBytesOrPowersOf1024) {
  EXPECT_EQ(parseSize("1048576"), 1'048'576U);
  EXPECT_EQ(parseSize("512K"), 524'288U);
  EXPECT_EQ(parseSize("512m"), 536'870'912U);
  EXPECT_EQ(parseSize("4G"), 4'294'967'296U);
  EXPECT_EQ(parseSize("1t"), 1'099'511'627'776U);
  for (auto const* text : {"", "0", "G", "-1G", "1.5G", "4GB", "4 G", "1X", "99999999999G",
                           "99999999999999999999", "8388608T"}) {
    EXPECT_FALSE(parseSize(text)) << text;
  }
}

TEST(Amounts, DurationsHaveAUnitOrAreInSeconds) {
  EXPECT_EQ(parseDuration("30"), milliseconds(30'000));
  EXPECT_EQ(parseDuration("30s"), milliseconds(30'000));
  EXPECT_EQ(parseDuration("5m"), milliseconds(300'000));
  EXPECT_EQ(parseDuration("2h"), milliseconds(7'200'000));
  EXPECT_EQ(parseDuration("250ms"), milliseconds(250));
  for (auto const* text : {"", "0s", "s", "-1s", "1.5s", "1 s", "1d", "9000h", "1sec"}) {
    EXPECT_FALSE(parseDuration(text)) << text;
  }
}

TEST(Amounts, AreDescribedInTheLargestUnitThatFits) {
  EXPECT_EQ(describeSize(4'294'967'296), "4 GiB");
  EXPECT_EQ(describeSize(1'536), "1536 bytes");
  EXPECT_EQ(describeDuration(milliseconds(600'000)), "10 minutes");
  EXPECT_EQ(describeDuration(milliseconds(1'000)), "1 second");
  EXPECT_EQ(describeDuration(milliseconds(1'500)), "1500 milliseconds");
}

TEST(Amounts, NeighboursInAListAreOneEntry) {
  EXPECT_EQ(listNumbers(std::vector<std::size_t>{7}), "7");
  EXPECT_EQ(listNumbers(std::vector<std::size_t>{3, 4, 5, 8, 12, 13}), "3 to 5, 8, 12 to 13");
}

TEST(Amounts, ALongListIsCut) {
  std::vector<std::size_t> numbers;
  for (std::size_t i = 0; i < 40; ++i) {
    numbers.push_back(2 * i);
  }
  EXPECT_EQ(listNumbers(numbers), "0, 2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22 and 28 more");
}

}  // namespace
}  // namespace Zorv::Words
