#pragma once

#include "ConditionalFormatters/Predicates/CndFrmt_DatePeriod.h"
#include "ConditionalFormatters/Predicates/CndFrmt_ValueKind.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_PreparedCondition.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"

// Prepared conditions that need nothing but the cell's value.
namespace Zorv::ConditionalFormatters {

/// Tests the kind of a value. Throws std::bad_function_call for each cell if the test is null.
class ValueKindCondition final : public PreparedCondition {
public:
  explicit ValueKindCondition(ValueKindTest test) noexcept : _test(test) {}

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;

private:
  ValueKindTest _test;
};

/// Tests for a date in a period relative to the moment of the pass.
class DatePeriodCondition final : public PreparedCondition {
public:
  DatePeriodCondition(DatePeriod const& period, OfficeUtils::LocaleContext locale,
                      DOM::TimeZone timeZone);

  [[nodiscard]] bool holds(TestedCell const& cell, PassContext& pass) const override;
  [[nodiscard]] ConditionOperands findOperands(TestedCell const& cell,
                                               PassContext& pass) const override;

private:
  DatePeriod _period;
  OfficeUtils::LocaleContext _locale;
  DOM::TimeZone _timeZone;
};

}  // namespace Zorv::ConditionalFormatters
