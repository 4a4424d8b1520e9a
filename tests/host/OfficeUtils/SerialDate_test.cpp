#include "OfficeUtils/SerialDate.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

namespace Zorv::OfficeUtils::SerialDate {
namespace {

using namespace std::chrono_literals;
using std::chrono::Friday;
using std::chrono::Monday;
using std::chrono::Saturday;
using std::chrono::Sunday;
using std::chrono::Thursday;
using std::chrono::Wednesday;

constexpr auto since1900 = DateSystem::Since1900;
constexpr auto since1904 = DateSystem::Since1904;

struct DateCase {
  DateSystem system;
  long serial;
  CivilDate date;
};

std::vector<DateCase> const dateCases{
    {since1900, 0, {1900, 1, 0}},         {since1900, 1, {1900, 1, 1}},
    {since1900, 31, {1900, 1, 31}},       {since1900, 32, {1900, 2, 1}},
    {since1900, 59, {1900, 2, 28}},       {since1900, 60, {1900, 2, 29}},
    {since1900, 61, {1900, 3, 1}},        {since1900, 366, {1900, 12, 31}},
    {since1900, 367, {1901, 1, 1}},       {since1900, 1462, {1904, 1, 1}},
    {since1900, 25569, {1970, 1, 1}},     {since1900, 36526, {2000, 1, 1}},
    {since1900, 36585, {2000, 2, 29}},    {since1900, 45351, {2024, 2, 29}},
    {since1900, 73110, {2100, 3, 1}},     {since1900, 73109, {2100, 2, 28}},
    {since1900, 2958465, {9999, 12, 31}}, {since1904, 0, {1904, 1, 1}},
    {since1904, 59, {1904, 2, 29}},       {since1904, 60, {1904, 3, 1}},
    {since1904, 24107, {1970, 1, 1}},     {since1904, 2957003, {9999, 12, 31}},
};

TEST(SerialDate, NumbersAndDatesCorrespond) {
  for (DateCase const& row : dateCases) {
    EXPECT_EQ(toCivilDate(static_cast<double>(row.serial), row.system), row.date) << row.serial;
    EXPECT_EQ(toSerial(row.date.year, row.date.month, row.date.day, row.system), row.serial);
  }
}

TEST(SerialDate, EveryDayComesBack) {
  for (DateSystem const system : {since1900, since1904}) {
    for (long serial = 0; toDay(static_cast<double>(serial), system); ++serial) {
      auto const date = toCivilDate(static_cast<double>(serial), system);
      ASSERT_TRUE(date);
      ASSERT_EQ(toSerial(date->year, date->month, date->day, system), serial);
      ASSERT_LE(date->day, getDaysInMonth(date->year, date->month, system));
    }
  }
}

TEST(SerialDate, TheTimeOfDayDoesNotMatter) {
  EXPECT_EQ(toDay(45351.999, since1900), 45351);
  EXPECT_EQ(toCivilDate(0.5, since1904), (CivilDate{1904, 1, 1}));
  EXPECT_EQ(toDay(2958465.999, since1900), 2958465);
}

TEST(SerialDate, NumbersOutsideTheDateSystemAreNoDays) {
  using Limits = std::numeric_limits<double>;
  for (double const serial : {-1.0, -0.001, 2958466.0, 1e300, -1e300, Limits::infinity(),
                              -Limits::infinity(), Limits::quiet_NaN()}) {
    EXPECT_FALSE(toDay(serial, since1900)) << serial;
    EXPECT_FALSE(toCivilDate(serial, since1900)) << serial;
  }
  EXPECT_FALSE(toDay(2957004.0, since1904));
}

TEST(SerialDate, MonthsAndDaysOutsideTheCalendarCarryOver) {
  EXPECT_EQ(toSerial(2023, 13, 1, since1900), toSerial(2024, 1, 1, since1900));
  EXPECT_EQ(toSerial(2024, 0, 1, since1900), toSerial(2023, 12, 1, since1900));
  EXPECT_EQ(toSerial(2024, -11, 1, since1900), toSerial(2023, 1, 1, since1900));
  EXPECT_EQ(toSerial(2024, -12, 1, since1900), toSerial(2022, 12, 1, since1900));
  EXPECT_EQ(toSerial(2024, 3, 0, since1900), toSerial(2024, 2, 29, since1900));
  EXPECT_EQ(toSerial(2024, 1, 367, since1900), toSerial(2025, 1, 1, since1900));
  EXPECT_EQ(toSerial(2024, 1, -30, since1900), toSerial(2023, 12, 1, since1900));
  EXPECT_EQ(toSerial(1900, 3, 0, since1900), 60);
  EXPECT_EQ(toSerial(1900, 1, 60, since1900), 60);
}

TEST(SerialDate, DatesOutsideTheDateSystemHaveNoNumber) {
  constexpr long long huge = std::numeric_limits<long long>::max();
  constexpr long long tiny = std::numeric_limits<long long>::min();
  EXPECT_FALSE(toSerial(1899, 12, 30, since1900));
  EXPECT_FALSE(toSerial(1903, 12, 31, since1904));
  EXPECT_FALSE(toSerial(10000, 1, 1, since1900));
  EXPECT_FALSE(toSerial(9999, 12, 32, since1900));
  EXPECT_FALSE(toSerial(-1, 1, 1, since1900));
  for (long long const extreme : {huge, tiny, 999'999'999LL, -999'999'999LL}) {
    EXPECT_FALSE(toSerial(extreme, 1, 1, since1900)) << extreme;
    EXPECT_FALSE(toSerial(2000, extreme, 1, since1900)) << extreme;
    EXPECT_FALSE(toSerial(2000, 1, extreme, since1900)) << extreme;
  }
}

TEST(SerialDate, DaysOfTheRealCalendarMayLieBeforeTheSystem) {
  EXPECT_EQ(toSerial(std::chrono::sys_days(1900y / 1 / 1), since1900), 1);
  EXPECT_EQ(toSerial(std::chrono::sys_days(1900y / 2 / 28), since1900), 59);
  EXPECT_EQ(toSerial(std::chrono::sys_days(1900y / 3 / 1), since1900), 61);
  EXPECT_EQ(toSerial(std::chrono::sys_days(1899y / 12 / 30), since1900), -1);
  EXPECT_EQ(toSerial(std::chrono::sys_days(1903y / 12 / 31), since1904), -1);
}

TEST(SerialDate, MonthsHaveTheirDays) {
  EXPECT_EQ(getDaysInMonth(1900, 2, since1900), 29U);
  EXPECT_EQ(getDaysInMonth(1900, 2, since1904), 28U);
  EXPECT_EQ(getDaysInMonth(2000, 2, since1900), 29U);
  EXPECT_EQ(getDaysInMonth(2023, 2, since1900), 28U);
  EXPECT_EQ(getDaysInMonth(2023, 4, since1900), 30U);
  EXPECT_EQ(getDaysInMonth(2023, 12, since1904), 31U);
}

TEST(SerialDate, WeekdaysRunWithoutGaps) {
  EXPECT_EQ(getWeekday(0, since1900), Saturday);
  EXPECT_EQ(getWeekday(1, since1900), Sunday);
  EXPECT_EQ(getWeekday(60, since1900), Wednesday);
  EXPECT_EQ(getWeekday(61, since1900), Thursday);
  EXPECT_EQ(getWeekday(45351, since1900), Thursday);  // 29 February 2024
  EXPECT_EQ(getWeekday(0, since1904), Friday);
  EXPECT_EQ(getWeekday(45351 - 1462, since1904), Thursday);
}

struct WeekCase {
  long long year;
  unsigned month;
  unsigned day;
  int weekFromSunday;
  int weekFromMonday;
};

// 1 January 2022 is a Saturday, 2023 begins on a Sunday, 2024 on a Monday.
std::vector<WeekCase> const weekCases{
    {2022, 1, 1, 1, 1},
    {2022, 1, 2, 2, 1},
    {2022, 1, 3, 2, 2},
    {2022, 12, 31, 53, 53},
    {2023, 1, 1, 1, 1},
    {2023, 1, 2, 1, 2},
    {2023, 1, 7, 1, 2},
    {2023, 1, 8, 2, 2},
    {2023, 1, 9, 2, 3},
    {2023, 12, 31, 53, 53},
    {2024, 1, 1, 1, 1},
    {2024, 1, 6, 1, 1},
    {2024, 1, 7, 2, 1},
    {2024, 1, 8, 2, 2},
    {2024, 2, 29, 9, 9},
    {2024, 12, 31, 53, 53},
    // Leap years that begin on the last day of a week have 54 weeks.
    {2028, 1, 1, 1, 1},
    {2028, 12, 31, 54, 53},
    {2012, 12, 31, 53, 54},
};

TEST(SerialDate, WeeksCountFromTheFirstOfJanuary) {
  for (DateSystem const system : {since1900, since1904}) {
    for (WeekCase const& row : weekCases) {
      long const day = toSerial(row.year, row.month, row.day, system).value();
      EXPECT_EQ(getYearWeek(day, system, Sunday), row.weekFromSunday)
          << row.year << '-' << row.month << '-' << row.day;
      EXPECT_EQ(getYearWeek(day, system, Monday), row.weekFromMonday)
          << row.year << '-' << row.month << '-' << row.day;
    }
  }
}

TEST(SerialDate, TheYearOfTheLeapYearQuirkHasItsWeeks) {
  EXPECT_EQ(getYearWeek(0, since1900, Sunday), 1);
  EXPECT_EQ(getYearWeek(0, since1900, Monday), 1);
  EXPECT_EQ(getYearWeek(1, since1900, Sunday), 1);
  EXPECT_EQ(getYearWeek(7, since1900, Sunday), 1);
  EXPECT_EQ(getYearWeek(8, since1900, Sunday), 2);
  EXPECT_EQ(getYearWeek(2, since1900, Monday), 2);
}

}  // namespace
}  // namespace Zorv::OfficeUtils::SerialDate
