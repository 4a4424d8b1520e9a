#pragma once

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/Moment.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Makes the current moment stand still for this thread until the scope ends: everything that asks
/// for the current date and time meanwhile gets the same one, and the clock is not read.
///
/// For hosts that evaluate many things as of one moment. Libraries do not pin a moment around calls
/// of their callers' code, which would see it too.
///
/// Scopes nest and end in reverse order, on the thread that began them.
class ZORV_HOST_EXPORT PinnedMoment {
public:
  explicit PinnedMoment(Clock::TimePoint moment) noexcept;
  PinnedMoment(PinnedMoment const&) = delete;
  PinnedMoment& operator=(PinnedMoment const&) = delete;
  ~PinnedMoment();

  /// The innermost scope of this thread, or null.
  [[nodiscard]] static PinnedMoment* getCurrent() noexcept;

  /// The moment of the innermost scope of this thread; the clock's if there is no scope.
  [[nodiscard]] static Clock::TimePoint readMoment() {
    auto* const pinned = getCurrent();
    return pinned != nullptr ? pinned->get().getTimePoint() : Clock::readCurrent();
  }

  [[nodiscard]] Moment& get() noexcept { return _moment; }

private:
  Moment _moment;
  PinnedMoment* _outer;
};

}  // namespace Zorv::OfficeUtils
