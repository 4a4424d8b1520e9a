#include "ConditionalFormatters/Operators/CndFrmt_NullaryOperator.h"

#include "ConditionalFormatters/Predicates/CndFrmt_DatePeriod.h"
#include "ConditionalFormatters/Predicates/CndFrmt_ValueKind.h"
#include "DOM/ConditionalFormatOperator.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"

namespace Zorv::ConditionalFormatters {

namespace {

using OfficeUtils::LocaleContext;
using Predicate = std::function<bool(FormulaValue const&)>;

// Empty for an unknown kind: calling it then throws.
Predicate makePredicate(DOM::NullaryConditionalFormatType type, LocaleContext const& locale,
                        DOM::TimeZone const& timeZone) {
  auto const period = findDatePeriod(type);
  if (!period) {
    return findValueKindTest(type);
  }
  if (type == DOM::NullaryConditionalFormatType::Last7Days) {
    return [period = *period, &locale, &timeZone](FormulaValue const& value) {
      return isInPeriod(value, period, locale, timeZone);
    };
  }
  return [period = *period, locale, timeZone](FormulaValue const& value) {
    return isInPeriod(value, period, locale, timeZone);
  };
}

}  // namespace

NullaryOperator::NullaryOperator(DOM::NullaryConditionalFormatOperator const& record,
                                 LocaleContext const& locale, DOM::TimeZone const& timeZone)
    : _predicate(makePredicate(record.getType(), locale, timeZone)) {}

bool NullaryOperator::operator()(FormulaValueData const& data) const {
  return _predicate(data.value);
}

}  // namespace Zorv::ConditionalFormatters
