#pragma once

#include <string_view>

#include "render/Picture.h"

/// Estimated sizes of text. They come from a table of average widths, so that a picture is the same
/// on every machine, whatever fonts it has.
namespace Zorv::Render {

/// Measures of a font that the estimate needs.
struct FontMeasures {
  double emPixels = 0;  ///< pixels of a thousandth of the font's size, for its own width of letters
  double digit = 0;     ///< width of a digit, in pixels
  double lineHeight = 0;  ///< of a row with one line, in pixels
  bool isBold = false;
  bool isMonospaced = false;
};

[[nodiscard]] FontMeasures findMeasures(Font const& font) noexcept;

/// Width of a digit in whole pixels, as programs round it to measure columns by a workbook's
/// default font; at least 1.
[[nodiscard]] double findDigitWidth(Font const& font) noexcept;

/// Width of one line of text in UTF-8, in pixels. Linear in its bytes.
[[nodiscard]] double measureText(std::string_view text, FontMeasures const& font) noexcept;

/// Lines that a text takes where it is wrapped at a width, its own line ends included; at least 1.
[[nodiscard]] double countWrappedLines(std::string_view text, FontMeasures const& font,
                                       double width) noexcept;

}  // namespace Zorv::Render
