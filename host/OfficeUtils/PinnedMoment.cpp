#include "OfficeUtils/PinnedMoment.h"

#include <utility>

namespace Zorv::OfficeUtils {

namespace {

constinit thread_local PinnedMoment* innermost = nullptr;

}  // namespace

PinnedMoment::PinnedMoment(Clock::TimePoint moment) noexcept
    : _moment(moment), _outer(std::exchange(innermost, this)) {}

PinnedMoment::~PinnedMoment() { innermost = _outer; }

PinnedMoment* PinnedMoment::getCurrent() noexcept { return innermost; }

DateTime const& PinnedMoment::toDateTime(DOM::TimeZone const& timeZone,
                                         LocaleContext const& locale) {
  if (!_last || !_last->timeZone.sharesDataWith(timeZone) ||
      !_last->locale.sharesDataWith(locale)) {
    _last.emplace(Remembered{timeZone, locale,
                             DateTime::fromMoment(_moment, timeZone, locale).withCalendarRead()});
  }
  return _last->dateTime;
}

}  // namespace Zorv::OfficeUtils
