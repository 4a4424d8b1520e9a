#include "Formulas/Text/DateText.h"

#include <optional>
#include <string_view>

#include <gtest/gtest.h>

namespace Zorv::Formulas {

namespace {

constexpr double serialOf30January2024 = 45321;

struct MomentTextCase {
  std::string_view text;
  std::optional<double> serial;
};

std::optional<double> readSerial(std::string_view text, char const* locale = "en-US",
                                 std::optional<int> currentYear = 2024) {
  auto const moment = readMoment(text, OfficeUtils::LocaleContext(locale), currentYear);
  return moment ? std::optional(moment->serial()) : std::nullopt;
}

TEST(DateText, DatesAreReadAsPeopleTypeThem) {
  for (std::string_view const text :
       {"2024-01-30", "1/30/2024", "1/30/24", "1-30-2024", "30 Jan 2024", "30-jan-24",
        "January 30, 2024", "Tuesday, January 30, 2024", "Jan. 30, 2024", "Jan 30", "1/30",
        " 2024-01-30 "}) {
    EXPECT_EQ(readSerial(text), serialOf30January2024) << text;
  }
}

TEST(DateText, TheLocaleGivesTheOrderTheSeparatorAndTheNames) {
  for (std::string_view const text : {"30.01.2024", "30.1.", "30. Januar 2024", "30/1/2024"}) {
    EXPECT_EQ(readSerial(text, "de-DE"), serialOf30January2024) << text;
  }
  EXPECT_EQ(readSerial("30.01.2024"), std::nullopt);
}

TEST(DateText, AMonthStandsForItsFirstDay) {
  EXPECT_EQ(readSerial("Jan 2024"), serialOf30January2024 - 29);
  EXPECT_EQ(readSerial("1/2024"), serialOf30January2024 - 29);
}

TEST(DateText, YearsOfTwoFiguresLieBetween1930And2029) {
  EXPECT_EQ(readSerial("1/1/29"), readSerial("2029-01-01"));
  EXPECT_EQ(readSerial("1/1/30"), readSerial("1930-01-01"));
  EXPECT_EQ(readSerial("1/1/123"), std::nullopt);
}

TEST(DateText, ADateWithoutAYearNeedsTheCurrentOne) {
  EXPECT_EQ(readSerial("Jan 30", "en-US", std::nullopt), std::nullopt);
  EXPECT_EQ(readSerial("2024-01-30", "en-US", std::nullopt), serialOf30January2024);
}

TEST(DateText, TimesAreFractionsOfADayAndMayExceedIt) {
  for (MomentTextCase const& c :
       {MomentTextCase{"18:00", 0.75}, MomentTextCase{"6:00 PM", 0.75},
        MomentTextCase{"6 pm", 0.75}, MomentTextCase{"12:00 AM", 0.0},
        MomentTextCase{"12:30 pm", 0.5 + 0.5 / 24}, MomentTextCase{"0:00:43.2", 0.0005},
        MomentTextCase{"36:00", 1.5}}) {
    auto const serial = readSerial(c.text);
    ASSERT_TRUE(serial) << c.text;
    EXPECT_DOUBLE_EQ(*serial, *c.serial) << c.text;
  }
}

TEST(DateText, ATimeMayFollowADate) {
  EXPECT_EQ(readSerial("2024-01-30T18:00"), serialOf30January2024 + 0.75);
  EXPECT_EQ(readSerial("1/30/2024 6 pm"), serialOf30January2024 + 0.75);
  EXPECT_EQ(readSerial("Jan 30 18:00"), serialOf30January2024 + 0.75);
}

TEST(DateText, TellsADayFromATimeOfDay) {
  auto const time = readMoment("18:00", OfficeUtils::LocaleContext(), std::nullopt);
  ASSERT_TRUE(time);
  EXPECT_EQ(time->day, std::nullopt);
  EXPECT_EQ(time->time, 0.75);
}

TEST(DateText, OtherTextsAreNone) {
  for (std::string_view const text : {"", "today", "2024", "2024-13-01", "2024-02-30", "2023-02-29",
                                      "0/1/2024", "1/0/2024", "12:60", "12:00:60", "13:00 PM", "6",
                                      "10000:00", "1/30/2024 x", "Tuesday", "Jan", "30 Foo 2024"}) {
    EXPECT_EQ(readSerial(text), std::nullopt) << text;
  }
}

}  // namespace

}  // namespace Zorv::Formulas
