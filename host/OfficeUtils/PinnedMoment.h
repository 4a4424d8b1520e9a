#pragma once

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/Moment.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Scope in which the current moment is fixed for this thread: every request for the current date
/// and time gets the same moment, and the clock in force is not read.
///
/// For hosts that evaluate many things as of one moment. A library must not pin a moment around
/// calls of its callers' code, which would see it too.
///
/// Scopes nest and must end in reverse order, on the thread that created them.
class ZORV_HOST_EXPORT PinnedMoment {
public:
  /// Fixes the moment.
  explicit PinnedMoment(Clock::TimePoint moment) noexcept;
  PinnedMoment(PinnedMoment const&) = delete;
  PinnedMoment& operator=(PinnedMoment const&) = delete;
  ~PinnedMoment();

  /// The innermost scope of this thread, or null.
  [[nodiscard]] static PinnedMoment* getCurrent() noexcept;

  /// The moment of the innermost scope of this thread; without one, that of the clock in force.
  [[nodiscard]] static Clock::TimePoint readMoment() {
    auto* const pinned = getCurrent();
    return pinned != nullptr ? pinned->get().getTimePoint() : Clock::readCurrent();
  }

  /// The fixed moment.
  [[nodiscard]] Moment& get() noexcept { return _moment; }

private:
  Moment _moment;
  PinnedMoment* _outer;
};

}  // namespace Zorv::OfficeUtils
