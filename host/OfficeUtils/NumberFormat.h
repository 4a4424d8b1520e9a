#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "OfficeUtils/LocaleContext.h"
#include "Utils/Export.h"

namespace Zorv::OfficeUtils {

/// Text of a cell as a sheet shows it.
struct ShownText {
  std::string text;  ///< in UTF-8, without the fill
  /// Number of the text's colour, from 1 to 56; 0 for the cell's own. 1 to 8 are black, white, red,
  /// green, blue, yellow, magenta and cyan; the others stand in the palette of ISO/IEC 29500-1,
  /// 18.8.27, seven places further on.
  unsigned colour = 0;
  /// Byte of the text at which `fill` is repeated to the width of the cell; nothing for no fill.
  std::optional<std::size_t> fillAt = std::nullopt;
  std::string fill = {};  ///< one character, in UTF-8
};

/// Compiled number format (ISO/IEC 29500-1, 18.8.31), such as `#,##0.00;[Red]-0.00` or
/// `yyyy-mm-dd`.
///
/// `_` writes one space. Colours and `*` are ignored unless a shown text is asked for. A handle to
/// immutable shared data: copying increments one reference count. Threads: const members may run
/// concurrently.
class ZORV_HOST_EXPORT NumberFormat {
public:
  /// Nothing where the text is no number format.
  [[nodiscard]] static std::optional<NumberFormat> compile(std::string_view code);

  /// The code of the format in which a locale writes dates in figures, such as `m/d/yyyy` or
  /// `dd.mm.yyyy`.
  [[nodiscard]] static std::string findDateCode(LocaleContext const& locale);

  /// A number in the format. Nothing where the format cannot show it: a number that is not finite,
  /// or, in a date format, one outside the date system.
  [[nodiscard]] std::optional<std::string> formatNumber(double number,
                                                        LocaleContext const& locale) const;

  /// The same with its colour and fill. A general format has at most `generalCharacters`, and is
  /// nothing where the number does not fit into them; from eleven on they make no difference.
  [[nodiscard]] std::optional<ShownText> showNumber(double number, LocaleContext const& locale,
                                                    unsigned generalCharacters) const;

  /// True if the format writes this number, or a part of its text, in general format.
  [[nodiscard]] bool isGeneral(double number) const noexcept;

  /// True if the format shows a year, a month or a day of this number.
  [[nodiscard]] bool showsDate(double number) const noexcept;

  /// A text in the format: the text itself unless the format has a section for texts.
  [[nodiscard]] std::string formatText(std::string_view text) const;
  /// The same with its colour and fill.
  [[nodiscard]] ShownText showText(std::string_view text) const;

private:
  struct Data;

  explicit NumberFormat(std::shared_ptr<Data const> data) noexcept;

  std::shared_ptr<Data const> _data;
};

}  // namespace Zorv::OfficeUtils
