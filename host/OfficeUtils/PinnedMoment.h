#pragma once

#include <chrono>
#include <optional>
#include <utility>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Makes the current moment stand still for this thread until the scope ends, so that everything
/// which is evaluated meanwhile sees one and the same; the clock in force is not read.
///
/// Scopes nest and end in reverse order. Ended by the thread that began it.
class ZORV_HOST_EXPORT PinnedMoment {
public:
  using LocalMoment = std::chrono::local_time<std::chrono::milliseconds>;

  explicit PinnedMoment(Clock::TimePoint moment) noexcept;
  PinnedMoment(PinnedMoment const&) = delete;
  PinnedMoment& operator=(PinnedMoment const&) = delete;
  ~PinnedMoment();

  /// The innermost scope of this thread, or null.
  [[nodiscard]] static PinnedMoment* getCurrent() noexcept;

  [[nodiscard]] Clock::TimePoint getMoment() const noexcept { return _moment; }

  /// What clocks in a zone show at the moment. Remembered for the zone asked about last: zones look
  /// their offset up in tables.
  [[nodiscard]] LocalMoment toLocal(DOM::TimeZone const& timeZone);

private:
  Clock::TimePoint _moment;
  PinnedMoment* _outer;
  std::optional<std::pair<DOM::TimeZone, LocalMoment>> _lastLocal;
};

}  // namespace Zorv::OfficeUtils
