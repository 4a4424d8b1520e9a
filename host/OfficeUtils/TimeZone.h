#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "Utils/Export.h"

// The document owns its time zone, hence the namespace. The date services need its inside, hence
// the folder: includes point one way.
namespace Zorv::DOM {

/// Time zone of a document.
///
/// A handle to immutable shared data: copying increments one reference count. Threads: const
/// members may run concurrently.
class ZORV_HOST_EXPORT TimeZone {
public:
  /// Coordinated universal time.
  TimeZone();

  /// A zone of the IANA time zone database ("Europe/Berlin"), or an offset ("GMT+2"). Letter case
  /// does not matter. Throws BaseRuntimeError for an unknown zone.
  explicit TimeZone(std::string const& name);

  /// The name in the spelling of the database.
  [[nodiscard]] std::string const& getName() const noexcept;

  /// The civil time of the zone at a moment of any year. Logarithmic in the number of the zone's
  /// transitions; allocates nothing.
  [[nodiscard]] std::chrono::local_time<std::chrono::milliseconds> toLocal(
      std::chrono::sys_time<std::chrono::microseconds> moment) const;

  /// True for copies of one handle; two zones of one name need not share data.
  [[nodiscard]] bool sharesDataWith(TimeZone const& other) const noexcept {
    return _data == other._data;
  }

private:
  struct Data;
  std::shared_ptr<Data const> _data;
};

}  // namespace Zorv::DOM
