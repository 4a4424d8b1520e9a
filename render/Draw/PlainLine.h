#pragma once

#include <string_view>
#include <vector>

#include "render/Draw/Typeface.h"

namespace Zorv::Render::Draw {

/// Line of text in one font whose characters stand side by side from left to right, each with a
/// glyph of its own: most texts of most sheets. What needs more is a Paragraph.
///
/// Made once and used for text after text, so that laying one out allocates nothing.
class PlainLine {
public:
  /// Lays a text out. False, and unusable, if it has line ends, characters that are joined,
  /// combined or written from right to left, or ones that the font lacks. Borrows the typeface, the
  /// font and the text.
  [[nodiscard]] bool layOut(Typeface& typeface, Font const& font, std::string_view text);

  // In CSS pixels.
  [[nodiscard]] double getWidth() const noexcept { return _width; }
  [[nodiscard]] double getHeight() const noexcept { return _typeface->getLineHeight(); }
  [[nodiscard]] double getAscent() const noexcept { return _typeface->getAscent(); }
  [[nodiscard]] static int countLines() noexcept { return 1; }

  /// Shows the line with its top left corner at a place, in the colour that is set. Glyphs that lie
  /// outside of `from` to `to` are left out.
  void show(cairo_t* cairo, double left, double top, double from, double to);

private:
  void showLines(cairo_t* cairo, double left, double baseline) const;

  Typeface* _typeface = nullptr;
  Font const* _font = nullptr;  ///< that has the lines below and through the text
  std::string_view _text;
  std::vector<cairo_glyph_t> _glyphs;  ///< from the start of the line on, on the baseline
  std::vector<cairo_text_cluster_t> _clusters;
  std::vector<cairo_glyph_t> _shown;
  double _width = 0;
};

}  // namespace Zorv::Render::Draw
