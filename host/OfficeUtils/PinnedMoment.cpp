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

}  // namespace Zorv::OfficeUtils
