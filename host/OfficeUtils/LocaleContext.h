#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <string>

#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Date system of serial numbers.
enum class DateSystem : std::uint8_t {
  Since1900,  ///< serial 1 is 1 January 1900; serial 60 is 29 February 1900, which never existed
  Since1904,  ///< serial 0 is 1 January 1904
};

/// Locale of casts and dates.
///
/// A handle to immutable shared data: copying increments one reference count. Threads: const
/// members may run concurrently.
class ZORV_HOST_EXPORT LocaleContext {
public:
  /// American English, dates since 1900.
  LocaleContext();

  /// A locale by its BCP 47 tag or ICU name ("de-DE", "en_US").
  /// Throws BaseRuntimeError for an unknown locale.
  explicit LocaleContext(std::string const& name, DateSystem dateSystem = DateSystem::Since1900);

  /// The name that the locale was made from.
  [[nodiscard]] std::string const& getName() const noexcept;
  /// The day from which serial numbers count.
  [[nodiscard]] DateSystem getDateSystem() const noexcept;

  /// The day on which weeks begin.
  [[nodiscard]] std::chrono::weekday getFirstDayOfWeek() const noexcept;

  /// Decimal separator, in UTF-8.
  [[nodiscard]] std::string const& getDecimalSeparator() const noexcept;
  /// Separator of digit groups, in UTF-8.
  [[nodiscard]] std::string const& getGroupingSeparator() const noexcept;

  /// The locale's word for true, in upper case.
  [[nodiscard]] std::string const& getTrueText() const noexcept;
  /// The locale's word for false, in upper case.
  [[nodiscard]] std::string const& getFalseText() const noexcept;

  /// True for copies of one handle; two locales of one name need not share data.
  [[nodiscard]] bool sharesDataWith(LocaleContext const& other) const noexcept {
    return _data == other._data;
  }

private:
  struct Data;
  std::shared_ptr<Data const> _data;
};

}  // namespace Zorv::OfficeUtils
