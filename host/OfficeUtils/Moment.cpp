#include "OfficeUtils/Moment.h"

namespace Zorv::OfficeUtils {

DateTime const& Moment::toDateTime(DOM::TimeZone const& timeZone, LocaleContext const& locale) {
  if (!_last || !_last->timeZone.sharesDataWith(timeZone) ||
      !_last->locale.sharesDataWith(locale)) {
    _last.emplace(LastAnswer{
        timeZone, locale, DateTime::fromMoment(_timePoint, timeZone, locale).withCalendarRead()});
  }
  return _last->dateTime;
}

}  // namespace Zorv::OfficeUtils
