#include "OfficeUtils/DateTime.h"

#include <cmath>
#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "OfficeUtils/Clock.h"

namespace Zorv::OfficeUtils {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

LocaleContext const american("en-US");
LocaleContext const germanDates("de-DE");
LocaleContext const american1904("en-US", DateSystem::Since1904);

DateTime read(double serial, LocaleContext const& locale = american) {
  return {FloatNumber(serial), locale};
}

struct DateTimeCase {
  double serial;
  LocaleContext locale;
  int month;
  int week;
};

TEST(DateTime, HasTheMonthAndTheWeekOfItsDateSystemAndLocale) {
  for (DateTimeCase const& row : std::vector<DateTimeCase>{
           {45351.0, american, 2, 9},               // Thursday, 29 February 2024
           {45351.75, american, 2, 9},              // its evening
           {45298.0, american, 1, 2},               // Sunday, 7 January 2024
           {45298.0, germanDates, 1, 1},            // the last day of a German week
           {60.0, american, 2, 9},                  // 29 February 1900
           {61.0, american, 3, 9},                  // 1 March 1900
           {0.0, american, 1, 1},                   // 0 January 1900
           {2958465.0, american, 12, 53},           // 31 December 9999
           {45351.0 - 1462.0, american1904, 2, 9},  // 29 February 2024
           {0.0, american1904, 1, 1},
       }) {
    EXPECT_EQ(read(row.serial, row.locale).getMonth(), row.month) << row.serial;
    EXPECT_EQ(read(row.serial, row.locale).getYearWeek(), row.week) << row.serial;
  }
}

TEST(DateTime, NumbersThatAreNoDateAreNextToNoRealWeekOrMonth) {
  using Limits = std::numeric_limits<double>;
  for (double const serial : {-1.0, 2958466.0, 1e300, -1e300, Limits::infinity(),
                              -Limits::infinity(), Limits::quiet_NaN()}) {
    EXPECT_EQ(read(serial).getMonth(), -1) << serial;
    EXPECT_EQ(read(serial).getYearWeek(), -1) << serial;
  }
}

TEST(DateTime, DaysAreTheWholePartOfTheNumber) {
  EXPECT_EQ(read(45351.75).calculateDays().get(), 45351.0);
  EXPECT_EQ(read(45351.0).calculateDays().get(), 45351.0);
  EXPECT_EQ(read(-0.25).calculateDays().get(), -1.0);
  EXPECT_EQ(read(45351.75).getSerial().get(), 45351.75);
}

TEST(DateTime, NowIsTheMomentInTheTimeZoneOnTheScaleOfCellNumbers) {
  ScopedClock const clock(sys_days(2024y / 2 / 29) + 18h);
  DOM::TimeZone const universal;
  DOM::TimeZone const sydney("Australia/Sydney");

  EXPECT_EQ(DateTime::getNow(universal, american).getSerial().get(), 45351.75);
  EXPECT_EQ(DateTime::getNow(universal, american).calculateDays().get(), 45351.0);
  EXPECT_EQ(DateTime::getNow(universal, american1904).calculateDays().get(), 45351.0 - 1462.0);
  EXPECT_EQ(DateTime::getNow(sydney, american).calculateDays().get(), 45352.0);
  EXPECT_EQ(DateTime::getNow(universal, american).getMonth(), 2);
  EXPECT_EQ(DateTime::getNow(sydney, american).getMonth(), 3);
}

TEST(DateTime, NowIsAskedAfresh) {
  DOM::TimeZone const universal;
  ScopedClock const first(sys_days(2024y / 12 / 31) + 23h + 59min);
  EXPECT_EQ(DateTime::getNow(universal, american).getMonth(), 12);
  ScopedClock const second(sys_days(2025y / 1 / 1));
  EXPECT_EQ(DateTime::getNow(universal, american).getMonth(), 1);
}

TEST(DateTime, AClockSetBeforeTheDateSystemYieldsANumberAllTheSame) {
  ScopedClock const clock(sys_days(1899y / 12 / 29) + 12h);
  auto const now = DateTime::getNow(DOM::TimeZone(), american);
  EXPECT_EQ(now.getSerial().get(), -1.5);
  EXPECT_EQ(now.calculateDays().get(), -2.0);
  EXPECT_EQ(now.getMonth(), -1);
}

}  // namespace
}  // namespace Zorv::OfficeUtils
