#include "ConditionalFormatters/Operators/CndFrmt_NullaryOperator.h"

#include <chrono>
#include <cmath>
#include <functional>
#include <memory>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "DOM/ConditionalFormatOperator.h"
#include "OfficeUtils/Clock.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using namespace std::chrono_literals;
using OfficeUtils::Clock;
using OfficeUtils::DateSystem;
using OfficeUtils::LocaleContext;
using OfficeUtils::ScopedClock;
using std::chrono::sys_days;
using std::chrono::year_month_day;
using testing::ElementsAre;
using testing::IsEmpty;
using Record = DOM::NullaryConditionalFormatOperator;
using Type = DOM::NullaryConditionalFormatType;

constexpr int firstDateKind = 4;
constexpr int kindCount = 14;

/// Stands still, and counts how often it is read.
class CountingClock final : public Clock {
public:
  explicit CountingClock(TimePoint moment) : _moment(moment) {}
  [[nodiscard]] TimePoint now() const override {
    ++_readings;
    return _moment;
  }
  [[nodiscard]] int takeReadings() { return std::exchange(_readings, 0); }

private:
  TimePoint _moment;
  mutable int _readings = 0;
};

class ThrowingClock final : public Clock {
public:
  [[nodiscard]] TimePoint now() const override { throw std::runtime_error("no time"); }
};

/// The serial number of a day from March 1900 on.
double serial(sys_days day, DateSystem system = DateSystem::Since1900) {
  sys_days const zero =
      system == DateSystem::Since1900 ? sys_days(1899y / 12 / 30) : sys_days(1904y / 1 / 1);
  return static_cast<double>((day - zero).count());
}

Record makeRecord(int type) { return Record(static_cast<Type>(type)); }

FormulaValueData cell(FormulaValue value) {
  return {std::move(value), CellIndex(RowIndex(0), ColumnIndex(0))};
}

/// A condition under a locale and a time zone that outlive it.
class Condition {
public:
  explicit Condition(Type type, LocaleContext locale = {}, DOM::TimeZone timeZone = {})
      : _locale(std::move(locale)),
        _timeZone(std::move(timeZone)),
        _operator(Record(type), _locale, _timeZone) {}

  [[nodiscard]] bool holds(FormulaValue value) const { return _operator(cell(std::move(value))); }
  [[nodiscard]] bool holds(double number) const { return holds(TestSupport::number(number)); }
  [[nodiscard]] bool holds(sys_days day) const {
    return holds(serial(day, _locale.getDateSystem()));
  }

  /// The days for which it holds, in the years around a day.
  [[nodiscard]] std::vector<sys_days> findDays(sys_days around) const {
    std::vector<sys_days> days;
    for (sys_days day = around - std::chrono::days(800); day <= around + std::chrono::days(800);
         day += std::chrono::days(1)) {
      if (holds(day)) {
        days.push_back(day);
      }
    }
    return days;
  }

private:
  LocaleContext _locale;
  DOM::TimeZone _timeZone;
  NullaryOperator _operator;
};

std::vector<sys_days> daysFromTo(sys_days first, sys_days last) {
  std::vector<sys_days> days;
  for (sys_days day = first; day <= last; day += std::chrono::days(1)) {
    days.push_back(day);
  }
  return days;
}

sys_days const wednesday = 2024y / 5 / 15;

TEST(NullaryOperator, TellsBlanksAndErrorsFromOtherValues) {
  struct Row {
    char const* name;
    FormulaValue value;
    bool blank;
    bool error;
  };
  std::vector<Row> const rows = {
      {"empty", empty(), true, false},
      {"no letters", text(""), false, false},
      {"text", text("#N/A"), false, false},
      {"number", number(0), false, false},
      {"NaN", number(std::nan("")), false, false},
      {"boolean", boolean(false), false, false},
      {"error", error(FormulaModel::FormulaErrorCode::Null), false, true},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(Condition(Type::Blanks).holds(row.value), row.blank) << row.name;
    EXPECT_EQ(Condition(Type::NoBlanks).holds(row.value), !row.blank) << row.name;
    EXPECT_EQ(Condition(Type::Errors).holds(row.value), row.error) << row.name;
    EXPECT_EQ(Condition(Type::NoErrors).holds(row.value), !row.error) << row.name;
  }
}

TEST(NullaryOperator, TheClockIsReadOnceForANumberInADatePeriodAndNeverElse) {
  auto const clock = std::make_shared<CountingClock>(wednesday + 9h);
  ScopedClock const scope(clock);
  std::vector<FormulaValue> const others = {empty(), text("45427"), boolean(true),
                                            error(FormulaModel::FormulaErrorCode::Value)};
  for (int type = 0; type < kindCount; ++type) {
    Condition const condition(static_cast<Type>(type));
    EXPECT_EQ(clock->takeReadings(), 0) << type;
    bool const isDateKind = type >= firstDateKind;
    for (auto const& other : others) {
      bool const holds = condition.holds(other);
      EXPECT_FALSE(isDateKind && holds) << type << ", value of kind " << other.which();
      EXPECT_EQ(clock->takeReadings(), 0) << type << ", value of kind " << other.which();
    }
    for (int call = 0; call < 2; ++call) {
      static_cast<void>(condition.holds(wednesday));
      EXPECT_EQ(clock->takeReadings(), isDateKind ? 1 : 0) << type;
    }
  }
}

TEST(NullaryOperator, TheMomentIsThatOfTheCall) {
  Condition const condition(Type::Today);
  {
    ScopedClock const scope(wednesday + 9h);
    EXPECT_TRUE(condition.holds(wednesday));
  }
  ScopedClock const scope(wednesday + 33h);
  EXPECT_FALSE(condition.holds(wednesday));
  EXPECT_TRUE(condition.holds(wednesday + std::chrono::days(1)));
}

struct Period {
  Type type;
  char const* locale;
  sys_days first;
  sys_days last;
};

TEST(NullaryOperator, DayAndWeekPeriodsHoldForTheirDaysInBothDateSystems) {
  std::vector<Period> const periods = {
      {Type::Yesterday, "en-US", 2024y / 5 / 14, 2024y / 5 / 14},
      {Type::Today, "en-US", 2024y / 5 / 15, 2024y / 5 / 15},
      {Type::Tomorrow, "en-US", 2024y / 5 / 16, 2024y / 5 / 16},
      {Type::Last7Days, "en-US", 2024y / 5 / 9, 2024y / 5 / 15},
  };
  // In the first minute of the day, and in the last.
  for (auto const now : {wednesday + 0min, wednesday + 1439min}) {
    ScopedClock const scope(now);
    for (auto const system : {DateSystem::Since1900, DateSystem::Since1904}) {
      for (auto const& period : periods) {
        Condition const condition(period.type, LocaleContext(period.locale, system));
        EXPECT_EQ(condition.findDays(wednesday), daysFromTo(period.first, period.last))
            << static_cast<int>(period.type);
      }
    }
  }
}

TEST(NullaryOperator, WeeksBeginWhereTheLocaleSays) {
  // In 2023 and 2025 other days have the same number of the week; they are left out here.
  std::vector<Period> const periods = {
      {Type::LastWeek, "en-US", 2024y / 5 / 5, 2024y / 5 / 11},
      {Type::ThisWeek, "en-US", 2024y / 5 / 12, 2024y / 5 / 18},
      {Type::NextWeek, "en-US", 2024y / 5 / 19, 2024y / 5 / 25},
      {Type::LastWeek, "de-DE", 2024y / 5 / 6, 2024y / 5 / 12},
      {Type::ThisWeek, "de-DE", 2024y / 5 / 13, 2024y / 5 / 19},
      {Type::NextWeek, "de-DE", 2024y / 5 / 20, 2024y / 5 / 26},
  };
  ScopedClock const scope(wednesday + 9h);
  for (auto const system : {DateSystem::Since1900, DateSystem::Since1904}) {
    for (auto const& period : periods) {
      Condition const condition(period.type, LocaleContext(period.locale, system));
      std::vector<sys_days> daysOf2024;
      for (auto const day : condition.findDays(wednesday)) {
        if (year_month_day(day).year() == 2024y) {
          daysOf2024.push_back(day);
        }
      }
      EXPECT_EQ(daysOf2024, daysFromTo(period.first, period.last))
          << period.locale << ' ' << static_cast<int>(period.type);
    }
  }
}

TEST(NullaryOperator, AWeekIsTheSameWeekOfEveryYear) {
  ScopedClock const scope(wednesday + 9h);
  Condition const condition(Type::ThisWeek);
  std::set<int> years;
  for (auto const day : condition.findDays(wednesday)) {
    years.insert(static_cast<int>(year_month_day(day).year()));
  }
  EXPECT_THAT(years, ElementsAre(2022, 2023, 2024, 2025, 2026));
}

TEST(NullaryOperator, AMonthIsTheSameMonthOfEveryYear) {
  ScopedClock const scope(wednesday + 9h);
  struct Row {
    Type type;
    std::chrono::month month;
  };
  for (auto const& [type, month] :
       {Row{Type::LastMonth, std::chrono::April}, Row{Type::ThisMonth, std::chrono::May},
        Row{Type::NextMonth, std::chrono::June}}) {
    for (auto const system : {DateSystem::Since1900, DateSystem::Since1904}) {
      Condition const condition(type, LocaleContext("en-US", system));
      for (sys_days day = 2023y / 1 / 1; day <= sys_days(2025y / 12 / 31);
           day += std::chrono::days(1)) {
        EXPECT_EQ(condition.holds(day), year_month_day(day).month() == month)
            << static_cast<int>(type) << ' ' << serial(day);
      }
    }
  }
  EXPECT_TRUE(Condition(Type::ThisMonth).holds(sys_days(2023y / 5 / 15)));
}

TEST(NullaryOperator, WeeksAndMonthsDoNotCrossTheTurnOfTheYear) {
  struct Row {
    Type type;
    sys_days now;
  };
  std::vector<Row> const rows = {
      {Type::LastWeek, 2024y / 1 / 3},
      {Type::NextWeek, 2024y / 12 / 31},
      {Type::LastMonth, 2024y / 1 / 3},
      {Type::NextMonth, 2024y / 12 / 3},
  };
  for (auto const& row : rows) {
    ScopedClock const scope(row.now + 9h);
    EXPECT_THAT(Condition(row.type).findDays(row.now), IsEmpty()) << static_cast<int>(row.type);
  }
}

TEST(NullaryOperator, DaysCrossTheTurnOfTheYear) {
  sys_days const newYear = 2024y / 1 / 1;
  ScopedClock const scope(newYear + 9h);
  EXPECT_TRUE(Condition(Type::Yesterday).holds(sys_days(2023y / 12 / 31)));
  EXPECT_EQ(Condition(Type::Last7Days).findDays(newYear), daysFromTo(2023y / 12 / 26, newYear));
}

TEST(NullaryOperator, TheTimeOfDayDoesNotCount) {
  ScopedClock const scope(wednesday + 9h);
  double const today = serial(wednesday);
  EXPECT_TRUE(Condition(Type::Today).holds(today + 0.75));
  EXPECT_FALSE(Condition(Type::Yesterday).holds(today + 0.75));
  EXPECT_FALSE(Condition(Type::Tomorrow).holds(today + 0.75));
  EXPECT_TRUE(Condition(Type::Yesterday).holds(today - 0.25));
  EXPECT_TRUE(Condition(Type::Tomorrow).holds(today + 1.25));
  EXPECT_TRUE(Condition(Type::Last7Days).holds(today + 0.999));
  EXPECT_FALSE(Condition(Type::Last7Days).holds(today - 6.001));
  EXPECT_TRUE(Condition(Type::ThisWeek).holds(today + 3.999));
  EXPECT_TRUE(Condition(Type::ThisMonth).holds(serial(2024y / 5 / 31) + 0.999));
}

TEST(NullaryOperator, TheDayOfANegativeNumberIsTheOneBelow) {
  ScopedClock const scope(sys_days(1904y / 1 / 1) + 9h);
  LocaleContext const locale("en-US", DateSystem::Since1904);
  EXPECT_TRUE(Condition(Type::Yesterday, locale).holds(-0.5));
  EXPECT_FALSE(Condition(Type::Today, locale).holds(-0.5));
  EXPECT_TRUE(Condition(Type::Today, locale).holds(-0.0));
  EXPECT_TRUE(Condition(Type::Last7Days, locale).holds(-5.5));
  EXPECT_FALSE(Condition(Type::Last7Days, locale).holds(-6.5));
}

TEST(NullaryOperator, NumbersThatAreNoDatesLieInNoWeekAndNoMonth) {
  for (sys_days const now : {sys_days(2024y / 1 / 3), wednesday, sys_days(2024y / 12 / 31)}) {
    ScopedClock const scope(now + 9h);
    for (int type = static_cast<int>(Type::LastWeek); type < kindCount; ++type) {
      for (double const noDate : {-5.0, 3e6, 1e300, -infinity, infinity, std::nan("")}) {
        EXPECT_FALSE(Condition(static_cast<Type>(type)).holds(noDate)) << type << ' ' << noDate;
      }
    }
  }
}

TEST(NullaryOperator, ANaNIsNeitherBeforeNorAfterADay) {
  ScopedClock const scope(wednesday + 9h);
  double const nan = std::nan("");
  EXPECT_TRUE(Condition(Type::Yesterday).holds(nan));
  EXPECT_TRUE(Condition(Type::Today).holds(nan));
  EXPECT_TRUE(Condition(Type::Tomorrow).holds(nan));
  EXPECT_FALSE(Condition(Type::Last7Days).holds(nan));
}

TEST(NullaryOperator, EveryPeriodIsThatOfTheTimeZone) {
  // A Saturday, the last day of the week and of the month, that is over in Berlin already.
  sys_days const saturday = 2024y / 8 / 31;
  sys_days const sunday = 2024y / 9 / 1;
  for (int type = firstDateKind; type < kindCount; ++type) {
    auto const kind = static_cast<Type>(type);
    auto const findDays = [&](sys_days day, std::chrono::hours hour, char const* timeZone) {
      ScopedClock const scope(day + hour);
      return Condition(kind, {}, DOM::TimeZone(timeZone)).findDays(saturday);
    };
    auto const onSunday = findDays(sunday, 12h, "UTC");
    EXPECT_EQ(findDays(saturday, 23h, "Europe/Berlin"), onSunday) << type;
    EXPECT_NE(findDays(saturday, 23h, "UTC"), onSunday) << type;
    EXPECT_EQ(findDays(sunday, 12h, "America/Los_Angeles"), onSunday) << type;
  }
}

TEST(NullaryOperator, OnlyTheLastSevenDaysFollowTheLocaleAndTheTimeZoneThatWereGiven) {
  ScopedClock const scope(wednesday + 23h);
  for (int type = firstDateKind; type < kindCount; ++type) {
    LocaleContext locale;
    DOM::TimeZone timeZone;
    NullaryOperator const condition(makeRecord(type), locale, timeZone);
    auto const holdsOn = [&](sys_days day, DateSystem system) {
      return condition(cell(number(serial(day, system))));
    };
    auto const findFirst = [&](DateSystem system) {
      sys_days day = 2024y / 1 / 1;
      while (day < sys_days(2025y / 1 / 1) && !holdsOn(day, system)) {
        day += std::chrono::days(1);
      }
      return day;
    };
    auto const before = findFirst(DateSystem::Since1900);
    locale = LocaleContext("en-US", DateSystem::Since1904);
    timeZone = DOM::TimeZone("Europe/Berlin");
    if (type == static_cast<int>(Type::Last7Days)) {
      EXPECT_EQ(before, sys_days(2024y / 5 / 9));
      EXPECT_EQ(findFirst(DateSystem::Since1904), sys_days(2024y / 5 / 10));
    } else {
      EXPECT_EQ(findFirst(DateSystem::Since1900), before) << type;
    }
  }
}

TEST(NullaryOperator, AnUnknownKindIsMadeAndThrowsWhenItIsAsked) {
  LocaleContext const locale;
  DOM::TimeZone const timeZone;
  for (int const type : {14, 15, 255}) {
    std::unique_ptr<Operator> const condition =
        std::make_unique<NullaryOperator>(makeRecord(type), locale, timeZone);
    EXPECT_THROW(static_cast<void>((*condition)(cell(empty()))), std::bad_function_call) << type;
    EXPECT_THROW(static_cast<void>((*condition)(cell(number(1)))), std::bad_function_call) << type;
  }
}

TEST(NullaryOperator, WhatTheDateServicesThrowReachesTheCaller) {
  ScopedClock const scope(std::make_shared<ThrowingClock>());
  for (int type = firstDateKind; type < kindCount; ++type) {
    EXPECT_THROW(static_cast<void>(Condition(static_cast<Type>(type)).holds(wednesday)),
                 std::runtime_error)
        << type;
  }
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
