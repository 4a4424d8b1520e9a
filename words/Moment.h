#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

#include "OfficeUtils/Clock.h"
#include "OfficeUtils/TimeZone.h"

namespace Zorv::Words {

using LocalSeconds = std::chrono::local_seconds;

/// Civil time, and the offset from universal time if one is written.
struct CivilTime {
  LocalSeconds local;
  std::optional<std::chrono::seconds> offset;
};

/// Parses a civil time such as `2026-11-21T12:00:00`, `2026-11-21T12:00` or `2026-11-21`
/// (midnight). A space may stand for the `T`, and `Z`, `+01:00` or `+0100` may follow the time of
/// day. Nothing for any other text, and for a date or time that does not exist.
[[nodiscard]] std::optional<CivilTime> parseCivilTime(std::string_view text) noexcept;

/// A civil time in the first form.
[[nodiscard]] std::string toText(LocalSeconds local);

/// The moment at which clocks in the zone show a civil time: the earlier one if there are two;
/// nothing if the clocks skip that time.
[[nodiscard]] std::optional<OfficeUtils::Clock::TimePoint> toMoment(LocalSeconds local,
                                                                    DOM::TimeZone const& timeZone);

/// The moment of a civil time: by its own offset if it has one, else that of the zone.
[[nodiscard]] std::optional<OfficeUtils::Clock::TimePoint> toMoment(CivilTime const& time,
                                                                    DOM::TimeZone const& timeZone);

}  // namespace Zorv::Words
