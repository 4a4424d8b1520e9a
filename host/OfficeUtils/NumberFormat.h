#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Compiled number format (ISO/IEC 29500-1, 18.8.31), such as `#,##0.00;[Red]-0.00` or
/// `yyyy-mm-dd`.
///
/// Colours are ignored; `_` writes one space, and `*` writes nothing. A handle to immutable shared
/// data: copying increments one reference count. Threads: const members may run concurrently.
class ZORV_HOST_EXPORT NumberFormat {
public:
  /// Nothing where the text is no number format.
  [[nodiscard]] static std::optional<NumberFormat> compile(std::string_view code);

  /// A number in the format. Nothing where the format cannot show it: a number that is not finite,
  /// or, in a date format, one outside the date system.
  [[nodiscard]] std::optional<std::string> formatNumber(double number,
                                                        LocaleContext const& locale) const;

  /// True if the format shows a year, a month or a day of this number.
  [[nodiscard]] bool showsDate(double number) const noexcept;

  /// A text in the format: the text itself unless the format has a section for texts.
  [[nodiscard]] std::string formatText(std::string_view text) const;

private:
  struct Data;

  explicit NumberFormat(std::shared_ptr<Data const> data) noexcept;

  std::shared_ptr<Data const> _data;
};

}  // namespace Zorv::OfficeUtils
