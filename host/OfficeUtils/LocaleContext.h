#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// How serial date numbers count days.
enum class DateSystem : std::uint8_t {
  Since1900,  ///< serial 1 is 1 January 1900, and serial 60 the day 29 February 1900 that never was
  Since1904,  ///< serial 0 is 1 January 1904
};

/// The locale under which values are cast and dates are read.
///
/// A handle to immutable shared data: copying counts one reference. Safe to read from several
/// threads.
class ZORV_HOST_EXPORT LocaleContext {
public:
  /// American English, dates since 1900.
  LocaleContext();

  /// A locale by its BCP 47 tag or ICU name ("de-DE", "en_US").
  /// Throws BaseRuntimeError when no such locale is known.
  explicit LocaleContext(std::string const& name, DateSystem dateSystem = DateSystem::Since1900);

  [[nodiscard]] std::string const& getName() const noexcept;
  [[nodiscard]] DateSystem getDateSystem() const noexcept;

  /// The day on which weeks begin.
  [[nodiscard]] std::chrono::weekday getFirstDayOfWeek() const noexcept;

  /// The texts that stand between a number's whole part and its fraction, and between groups of
  /// digits; in UTF-8.
  [[nodiscard]] std::string const& getDecimalSeparator() const noexcept;
  [[nodiscard]] std::string const& getGroupingSeparator() const noexcept;

  /// The locale's own words for the two truth values, in upper case.
  [[nodiscard]] std::string const& getTrueText() const noexcept;
  [[nodiscard]] std::string const& getFalseText() const noexcept;

  /// Whether both are one and the same, by being copies of each other.
  [[nodiscard]] bool sharesDataWith(LocaleContext const& other) const noexcept {
    return _data == other._data;
  }

private:
  struct Data;
  std::shared_ptr<Data const> _data;
};

}  // namespace Zorv::OfficeUtils
