#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "Utils/Export.h"

// The document owns its time zone, and so the name; the date services need its inside, and so the
// file lives here: includes point one way.
namespace Zorv::DOM {

/// A document's time zone.
///
/// A handle to immutable shared data: copying counts one reference. Safe to read from several
/// threads.
class ZORV_HOST_EXPORT TimeZone {
public:
  /// Coordinated universal time.
  TimeZone();

  /// A zone of the IANA time zone database ("Europe/Berlin").
  /// Throws BaseRuntimeError when no such zone is known.
  explicit TimeZone(std::string const& name);

  [[nodiscard]] std::string const& getName() const noexcept;

  /// The civil time that clocks in the zone show at a moment. Logarithmic in the number of times
  /// that they were ever changed; allocates nothing.
  [[nodiscard]] std::chrono::local_time<std::chrono::milliseconds> toLocal(
      std::chrono::system_clock::time_point moment) const;

  /// Whether two handles share their data, as copies do; two zones of one name need not.
  [[nodiscard]] bool sharesDataWith(TimeZone const& other) const noexcept {
    return _data == other._data;
  }

private:
  struct Data;
  std::shared_ptr<Data const> _data;
};

}  // namespace Zorv::DOM
