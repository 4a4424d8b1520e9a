#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::OfficeUtils {

namespace {

constinit thread_local PinnedMoment* innermost = nullptr;

}  // namespace

PinnedMoment::PinnedMoment(Clock::TimePoint moment) noexcept
    : _moment(moment), _outer(std::exchange(innermost, this)) {}

PinnedMoment::~PinnedMoment() { innermost = _outer; }

PinnedMoment* PinnedMoment::getCurrent() noexcept { return innermost; }

PinnedMoment::LocalMoment PinnedMoment::toLocal(DOM::TimeZone const& timeZone) {
  if (!_lastLocal || !_lastLocal->first.sharesDataWith(timeZone)) {
    _lastLocal.emplace(timeZone, timeZone.toLocal(_moment));
  }
  return _lastLocal->second;
}

}  // namespace Zorv::OfficeUtils
