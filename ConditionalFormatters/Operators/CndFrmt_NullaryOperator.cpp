#include "ConditionalFormatters/Operators/CndFrmt_NullaryOperator.h"

#include "DOM/ConditionalFormatOperator.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"

namespace Zorv::ConditionalFormatters {

namespace {

using OfficeUtils::DateTime;
using OfficeUtils::LocaleContext;

template <int Offset>
bool isDayFromToday(FormulaValue const& value, LocaleContext const& locale,
                    DOM::TimeZone const& timeZone) {
  auto const number = FormulaModel::asFormulaNumberOpt(value);
  if (!number) {
    return false;
  }
  auto const target = DateTime::getNow(timeZone, locale).calculateDays() + FloatNumber(Offset);
  auto const day = floor(number->value);
  // Not written as equality: a number that is not a number is neither before the day nor after it.
  return !(target > day) && !(day > target);
}

bool isInLast7Days(FormulaValue const& value, LocaleContext const& locale,
                   DOM::TimeZone const& timeZone) {
  auto const number = FormulaModel::asFormulaNumberOpt(value);
  if (!number) {
    return false;
  }
  auto const day = floor(number->value);
  auto const today = DateTime::getNow(timeZone, locale).calculateDays();
  if (day > today) {
    return false;
  }
  auto const daysAgo = today - day;
  return daysAgo == FloatNumber(0.0) || daysAgo <= FloatNumber(6.0);
}

template <int Offset>
bool isWeekFromThis(FormulaValue const& value, LocaleContext const& locale,
                    DOM::TimeZone const& timeZone) {
  auto const number = FormulaModel::asFormulaNumberOpt(value);
  if (!number) {
    return false;
  }
  DateTime const date(number->value, locale);
  auto const now = DateTime::getNow(timeZone, locale);
  return date.getYearWeek() == now.getYearWeek() + Offset;
}

template <int Offset>
bool isMonthFromThis(FormulaValue const& value, LocaleContext const& locale,
                     DOM::TimeZone const& timeZone) {
  auto const number = FormulaModel::asFormulaNumberOpt(value);
  if (!number) {
    return false;
  }
  DateTime const date(number->value, locale);
  auto const now = DateTime::getNow(timeZone, locale);
  return date.getMonth() == now.getMonth() + Offset;
}

using DateTest = bool (*)(FormulaValue const&, LocaleContext const&, DOM::TimeZone const&);

// Null for kinds that are no date periods.
DateTest findDateTest(DOM::NullaryConditionalFormatType type) noexcept {
  using Type = DOM::NullaryConditionalFormatType;
  switch (type) {
    case Type::Yesterday:
      return isDayFromToday<-1>;
    case Type::Today:
      return isDayFromToday<0>;
    case Type::Tomorrow:
      return isDayFromToday<1>;
    case Type::Last7Days:
      return isInLast7Days;
    case Type::LastWeek:
      return isWeekFromThis<-1>;
    case Type::ThisWeek:
      return isWeekFromThis<0>;
    case Type::NextWeek:
      return isWeekFromThis<1>;
    case Type::LastMonth:
      return isMonthFromThis<-1>;
    case Type::ThisMonth:
      return isMonthFromThis<0>;
    case Type::NextMonth:
      return isMonthFromThis<1>;
    default:
      return nullptr;
  }
}

using Predicate = std::function<bool(FormulaValue const&)>;

Predicate makeDatePredicate(DOM::NullaryConditionalFormatType type, LocaleContext const& locale,
                            DOM::TimeZone const& timeZone) {
  DateTest const test = findDateTest(type);
  if (test == nullptr) {
    return {};
  }
  if (type == DOM::NullaryConditionalFormatType::Last7Days) {
    return [test, &locale, &timeZone](FormulaValue const& value) {
      return test(value, locale, timeZone);
    };
  }
  return
      [test, locale, timeZone](FormulaValue const& value) { return test(value, locale, timeZone); };
}

Predicate makePredicate(DOM::NullaryConditionalFormatType type, LocaleContext const& locale,
                        DOM::TimeZone const& timeZone) {
  using Type = DOM::NullaryConditionalFormatType;
  switch (type) {
    case Type::Blanks:
      return FormulaModel::isFormulaEmpty;
    case Type::NoBlanks:
      return [](FormulaValue const& value) { return !FormulaModel::isFormulaEmpty(value); };
    case Type::Errors:
      return FormulaModel::isFormulaError;
    case Type::NoErrors:
      return [](FormulaValue const& value) { return !FormulaModel::isFormulaError(value); };
    default:
      return makeDatePredicate(type, locale, timeZone);
  }
}

}  // namespace

NullaryOperator::NullaryOperator(DOM::NullaryConditionalFormatOperator const& record,
                                 LocaleContext const& locale, DOM::TimeZone const& timeZone)
    : _predicate(makePredicate(record.getType(), locale, timeZone)) {}

bool NullaryOperator::operator()(FormulaValueData const& data) const {
  return _predicate(data.value);
}

}  // namespace Zorv::ConditionalFormatters
