#include "ConditionalFormatters/Predicates/CndFrmt_DatePeriod.h"

#include "FormulaModel/FormulaValueAccess.h"
#include "OfficeUtils/DateTime.h"

namespace Zorv::ConditionalFormatters {

namespace {

using OfficeUtils::DateTime;
using Unit = DateUnit;

bool isDayInPeriod(FloatNumber day, DatePeriod const& period, FloatNumber today) {
  if (period.first == period.last) {
    auto const target = today + FloatNumber(period.first);
    // Not written as equality: NaN is neither before the day nor after it.
    return !(target > day) && !(day > target);
  }
  if (day > today) {
    return false;
  }
  auto const daysAgo = today - day;
  return daysAgo == FloatNumber(0.0) || daysAgo <= FloatNumber(-period.first);
}

bool isNumberInPeriod(int number, DatePeriod const& period, int current) noexcept {
  return current + period.first <= number && number <= current + period.last;
}

}  // namespace

boost::optional<DatePeriod> findDatePeriod(DOM::NullaryConditionalFormatType type) noexcept {
  using Type = DOM::NullaryConditionalFormatType;
  switch (type) {
    case Type::Yesterday:
      return DatePeriod{Unit::Day, -1, -1};
    case Type::Today:
      return DatePeriod{Unit::Day, 0, 0};
    case Type::Tomorrow:
      return DatePeriod{Unit::Day, 1, 1};
    case Type::Last7Days:
      return DatePeriod{Unit::Day, -6, 0};
    case Type::LastWeek:
      return DatePeriod{Unit::Week, -1, -1};
    case Type::ThisWeek:
      return DatePeriod{Unit::Week, 0, 0};
    case Type::NextWeek:
      return DatePeriod{Unit::Week, 1, 1};
    case Type::LastMonth:
      return DatePeriod{Unit::Month, -1, -1};
    case Type::ThisMonth:
      return DatePeriod{Unit::Month, 0, 0};
    case Type::NextMonth:
      return DatePeriod{Unit::Month, 1, 1};
    default:
      return boost::none;
  }
}

bool isInPeriod(FormulaValue const& value, DatePeriod const& period,
                OfficeUtils::LocaleContext const& locale, DOM::TimeZone const& timeZone,
                OfficeUtils::Moment* moment) {
  auto const number = FormulaModel::asFormulaNumberOpt(value);
  if (!number) {
    return false;
  }
  auto const compareWithNow = [&](auto const& compare) {
    return moment != nullptr ? compare(moment->toDateTime(timeZone, locale))
                             : compare(DateTime::getNow(timeZone, locale));
  };
  if (period.unit == Unit::Day) {
    return compareWithNow([&](DateTime const& now) {
      return isDayInPeriod(floor(number->value), period, now.calculateDays());
    });
  }
  DateTime const date(number->value, locale);
  return compareWithNow([&](DateTime const& now) {
    return period.unit == Unit::Week
               ? isNumberInPeriod(date.getYearWeek(), period, now.getYearWeek())
               : isNumberInPeriod(date.getMonth(), period, now.getMonth());
  });
}

PeriodOperand findLimits(DatePeriod const& period, DateTime const& now) {
  double const current = period.unit == Unit::Day    ? now.calculateDays().get()
                         : period.unit == Unit::Week ? now.getYearWeek()
                                                     : now.getMonth();
  return {period.unit, current + period.first, current + period.last};
}

}  // namespace Zorv::ConditionalFormatters
