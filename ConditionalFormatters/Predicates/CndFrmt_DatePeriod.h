#pragma once

#include <boost/optional.hpp>

#include "ConditionalFormatters/CndFrmt_ConditionOperands.h"
#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValue.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/Moment.h"
#include "OfficeUtils/TimeZone.h"

namespace Zorv::ConditionalFormatters {

/// A period of dates relative to the current date: days, or weeks or months of a year. Closed.
///
/// Days are serial days and cross the turn of months and years. Weeks and months are compared by
/// their number within the year alone: "this month" holds in every year, no date is "next month" in
/// December, and none is "last week" in the first week of a year.
struct DatePeriod {
  DateUnit unit;
  int first;  ///< added to the current day, week or month
  int last;
};

/// The period of a kind of record; none for a kind that is no date period.
[[nodiscard]] boost::optional<DatePeriod> findDatePeriod(
    DOM::NullaryConditionalFormatType type) noexcept;

/// True if a value is a date in the period. Dates are numbers, read under the locale's date system;
/// any other value is in no period, and the clock is then not read.
///
/// The current date and time are those of `moment`, or are read from the clock if that is null.
[[nodiscard]] bool isInPeriod(FormulaValue const& value, DatePeriod const& period,
                              OfficeUtils::LocaleContext const& locale,
                              DOM::TimeZone const& timeZone, OfficeUtils::Moment* moment = nullptr);

/// The limits of a period at a date and time.
[[nodiscard]] PeriodOperand findLimits(DatePeriod const& period, OfficeUtils::DateTime const& now);

}  // namespace Zorv::ConditionalFormatters
