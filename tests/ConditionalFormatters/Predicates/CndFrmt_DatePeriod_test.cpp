#include "ConditionalFormatters/Predicates/CndFrmt_DatePeriod.h"

#include <limits>

#include <gtest/gtest.h>

#include "support/RunningClock.h"
#include "support/Values.h"

namespace Zorv::ConditionalFormatters {
namespace {

using namespace TestSupport;
using OfficeUtils::Moment;
using Type = DOM::NullaryConditionalFormatType;

// 21 November 2026 is a Saturday, the last day of week 47 where weeks begin on Sunday.
constexpr double today = 46347;

struct LimitsCase {
  Type type;
  DateUnit unit;
  double first;
  double last;
};

TEST(DatePeriod, LimitsAreDaysWeeksOrMonths) {
  LimitsCase const cases[] = {
      {Type::Yesterday, DateUnit::Day, today - 1, today - 1},
      {Type::Today, DateUnit::Day, today, today},
      {Type::Tomorrow, DateUnit::Day, today + 1, today + 1},
      {Type::Last7Days, DateUnit::Day, today - 6, today},
      {Type::LastWeek, DateUnit::Week, 46, 46},
      {Type::ThisWeek, DateUnit::Week, 47, 47},
      {Type::NextWeek, DateUnit::Week, 48, 48},
      {Type::LastMonth, DateUnit::Month, 10, 10},
      {Type::ThisMonth, DateUnit::Month, 11, 11},
      {Type::NextMonth, DateUnit::Month, 12, 12},
  };
  Moment moment(noonOn21November());
  auto const& now = moment.toDateTime(DOM::TimeZone(), OfficeUtils::LocaleContext("en-US"));
  for (auto const& each : cases) {
    auto const period = findDatePeriod(each.type);
    ASSERT_TRUE(period);
    auto const limits = findLimits(*period, now);
    EXPECT_EQ(limits.unit, each.unit) << static_cast<int>(each.type);
    EXPECT_EQ(limits.first, each.first) << static_cast<int>(each.type);
    EXPECT_EQ(limits.last, each.last) << static_cast<int>(each.type);
  }
}

TEST(DatePeriod, OtherKindsArePeriodsOfNoDate) {
  for (auto const type : {Type::Blanks, Type::NoErrors, static_cast<Type>(14)}) {
    EXPECT_FALSE(findDatePeriod(type));
  }
}

TEST(DatePeriod, TheMomentComesBeforeTheClock) {
  OfficeUtils::ScopedClock const clock(noonOn21November() + std::chrono::days(1));
  Moment moment(noonOn21November());
  OfficeUtils::LocaleContext const locale("en-US");
  DOM::TimeZone const utc;
  auto const period = *findDatePeriod(Type::Today);
  EXPECT_TRUE(isInPeriod(number(today), period, locale, utc, &moment));
  EXPECT_FALSE(isInPeriod(number(today), period, locale, utc));
  EXPECT_TRUE(isInPeriod(number(today + 1), period, locale, utc));
}

TEST(DatePeriod, NaNIsOnEveryDayButInNoPeriodOfSeveral) {
  Moment moment(noonOn21November());
  OfficeUtils::LocaleContext const locale("en-US");
  DOM::TimeZone const utc;
  auto const nan = number(std::numeric_limits<double>::quiet_NaN());
  EXPECT_TRUE(isInPeriod(nan, *findDatePeriod(Type::Today), locale, utc, &moment));
  EXPECT_FALSE(isInPeriod(nan, *findDatePeriod(Type::Last7Days), locale, utc, &moment));
}

}  // namespace
}  // namespace Zorv::ConditionalFormatters
