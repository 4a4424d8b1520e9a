#include "ConditionalFormatters/WholeTable/CndFrmt_ValueConditions.h"

#include <functional>
#include <utility>

namespace Zorv::ConditionalFormatters {

bool ValueKindCondition::holds(TestedCell const& cell, PassContext& /*pass*/) const {
  if (_test == nullptr) {
    throw std::bad_function_call();
  }
  return _test(cell.data.value);
}

ConditionOperands ValueKindCondition::findOperands(TestedCell const& /*cell*/,
                                                   PassContext& /*pass*/) const {
  return std::monostate();
}

DatePeriodCondition::DatePeriodCondition(DatePeriod const& period,
                                         OfficeUtils::LocaleContext locale, DOM::TimeZone timeZone)
    : _period(period), _locale(std::move(locale)), _timeZone(std::move(timeZone)) {}

bool DatePeriodCondition::holds(TestedCell const& cell, PassContext& pass) const {
  return isInPeriod(cell.data.value, _period, _locale, _timeZone, &pass.getMoment());
}

ConditionOperands DatePeriodCondition::findOperands(TestedCell const& /*cell*/,
                                                    PassContext& pass) const {
  return findLimits(_period, pass.getMoment().toDateTime(_timeZone, _locale));
}

}  // namespace Zorv::ConditionalFormatters
