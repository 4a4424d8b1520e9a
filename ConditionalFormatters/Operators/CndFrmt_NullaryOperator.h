#pragma once

#include <functional>

#include "ConditionalFormatters/CndFrmt_Export.h"
#include "ConditionalFormatters/Operators/CndFrmt_Operator.h"
#include "FormulaModel/FormulaValue.h"

namespace Zorv::DOM {
class NullaryConditionalFormatOperator;
class TimeZone;
}  // namespace Zorv::DOM

namespace Zorv::OfficeUtils {
class LocaleContext;
}  // namespace Zorv::OfficeUtils

namespace Zorv::ConditionalFormatters {

/// Asks for a kind of value (blank, error) or for a date in a period relative to today.
///
/// Dates are numbers, read under the locale's date system; no other value is in any period. The day
/// periods count serial days and cross the turn of months and years. The week and month periods
/// compare the number of the week or the month within the year alone: "this month" holds in every
/// year, and nothing is "next month" in December or "last week" in the year's first week.
///
/// Ownership: keeps copies of the locale and the time zone, but for the last seven days only
/// references: both must outlive the operator. Threads: may be called from several threads.
class CNDFRMT_EXPORT NullaryOperator final : public Operator {
public:
  /// A record of an unknown kind is accepted; see operator()().
  NullaryOperator(DOM::NullaryConditionalFormatOperator const& record,
                  OfficeUtils::LocaleContext const& locale, DOM::TimeZone const& timeZone);

  /// Date periods read the clock on every call, but not for a value that is no number.
  ///
  /// Throws std::bad_function_call when the record's kind is unknown, and passes on what the date
  /// services throw. Never reads the cell's index.
  [[nodiscard]] bool operator()(FormulaValueData const& data) const override;
  ~NullaryOperator() override = default;

private:
  std::function<bool(FormulaValue const&)> _predicate;
};

}  // namespace Zorv::ConditionalFormatters
