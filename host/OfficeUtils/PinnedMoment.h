#pragma once

#include <optional>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/DateTime.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Makes the current moment stand still for this thread until the scope ends, so that everything
/// which is evaluated meanwhile sees one and the same; the clock in force is not read.
///
/// Scopes nest and end in reverse order. Ended by the thread that began it.
class ZORV_HOST_EXPORT PinnedMoment {
public:
  explicit PinnedMoment(Clock::TimePoint moment) noexcept;
  PinnedMoment(PinnedMoment const&) = delete;
  PinnedMoment& operator=(PinnedMoment const&) = delete;
  ~PinnedMoment();

  /// The innermost scope of this thread, or null.
  [[nodiscard]] static PinnedMoment* getCurrent() noexcept;

  /// The moment of the innermost scope of this thread; without one, what the clock in force shows.
  [[nodiscard]] static Clock::TimePoint readMoment() {
    auto const* const pinned = getCurrent();
    return pinned != nullptr ? pinned->_moment : Clock::readCurrent();
  }

  /// What clocks in a zone show at the moment. Remembered for the zone and the locale asked about
  /// last: zones look their offset up in tables, and calendars are reckoned.
  [[nodiscard]] DateTime const& toDateTime(DOM::TimeZone const& timeZone,
                                           LocaleContext const& locale);

private:
  struct Remembered {
    DOM::TimeZone timeZone;
    LocaleContext locale;
    DateTime dateTime;
  };

  Clock::TimePoint _moment;
  PinnedMoment* _outer;
  std::optional<Remembered> _last;
};

}  // namespace Zorv::OfficeUtils
