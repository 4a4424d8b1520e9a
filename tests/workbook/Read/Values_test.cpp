#include "workbook/Read/Values.h"

#include <gtest/gtest.h>

namespace Zorv::Workbook {
namespace {

using OfficeUtils::DateSystem;

TEST(Values, NumbersAreReadWhole) {
  EXPECT_EQ(parseNumber("12.5"), 12.5);
  EXPECT_EQ(parseNumber(" +1E3\n"), 1000);
  EXPECT_EQ(parseNumber("-.5"), -0.5);
  for (char const* text : {"", " ", "1,5", "12a", "NaN", "inf", "1e999", "0x10", "--1"}) {
    EXPECT_FALSE(parseNumber(text)) << text;
  }
}

TEST(Values, IntegersAreReadWhole) {
  EXPECT_EQ(parseInteger("-12"), -12);
  for (char const* text : {"", "1.5", "99999999999999999999"}) {
    EXPECT_FALSE(parseInteger(text)) << text;
  }
}

TEST(Values, TruthValuesHaveSeveralWords) {
  EXPECT_EQ(parseBoolean("1"), true);
  EXPECT_EQ(parseBoolean(" true "), true);
  EXPECT_EQ(parseBoolean("off"), false);
  EXPECT_FALSE(parseBoolean("2"));
  EXPECT_FALSE(parseBoolean(""));
}

struct IsoCase {
  char const* text;
  DateSystem system;
  double serial;
};

class IsoDates : public testing::TestWithParam<IsoCase> {};

TEST_P(IsoDates, AreSerialNumbersOfTheDateSystem) {
  auto const serial = parseIsoDate(GetParam().text, GetParam().system);
  ASSERT_TRUE(serial) << GetParam().text;
  EXPECT_DOUBLE_EQ(*serial, GetParam().serial) << GetParam().text;
}

INSTANTIATE_TEST_SUITE_P(
    Values, IsoDates,
    testing::Values(IsoCase{"1900-01-01", DateSystem::Since1900, 1},
                    IsoCase{"1900-03-01", DateSystem::Since1900, 61},
                    IsoCase{"2026-11-21", DateSystem::Since1900, 46'347},
                    IsoCase{"2026-11-21", DateSystem::Since1904, 44'885},
                    IsoCase{"2026-11-21T06:00", DateSystem::Since1900, 46'347.25},
                    IsoCase{"2026-11-21T12:00:00Z", DateSystem::Since1900, 46'347.5},
                    IsoCase{"2026-11-21T18:00:00.000+02:00", DateSystem::Since1900, 46'347.75},
                    IsoCase{"12:00:00", DateSystem::Since1900, 0.5},
                    IsoCase{"T06:00:00", DateSystem::Since1900, 0.25}));

TEST(Values, TextsThatAreNoDatesAreRefused) {
  for (char const* text : {"", "today", "2026-13-01", "2026-02-30", "2026-1-1", "2026-11-21T",
                           "2026-11-21T25:00", "2026-11-21T12:60", "2026-11-21x", "12"}) {
    EXPECT_FALSE(parseIsoDate(text, DateSystem::Since1900)) << text;
  }
}

}  // namespace
}  // namespace Zorv::Workbook
