#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// A number format (ISO/IEC 29500-1, 18.8.31), such as `#,##0.00;[Red]-0.00` or `yyyy-mm-dd`.
///
/// Compiled once, used for any number of values. A handle to immutable shared data: copying counts
/// one reference. Safe to use from several threads. Colours are read and left out, a space stands
/// for the width that `_` keeps free, and nothing for what `*` would fill up.
class ZORV_HOST_EXPORT NumberFormat {
public:
  /// Nothing where the text is no format.
  [[nodiscard]] static std::optional<NumberFormat> compile(std::string_view code);

  /// A number in the format. Nothing for what it cannot show: a number that is no date in a format
  /// of dates, and one that is not finite.
  [[nodiscard]] std::optional<std::string> formatNumber(double number,
                                                        LocaleContext const& locale) const;

  /// A text in the format, which is the text itself unless the format says more.
  [[nodiscard]] std::string formatText(std::string_view text) const;

private:
  struct Data;

  explicit NumberFormat(std::shared_ptr<Data const> data) noexcept;

  std::shared_ptr<Data const> _data;
};

}  // namespace Zorv::OfficeUtils
