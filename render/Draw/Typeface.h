#pragma once

#include <pango/pangocairo.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>

#include "render/Draw/Cairo.h"
#include "render/Picture.h"

namespace Zorv::Render::Draw {

struct GObjectDeleter {
  void operator()(gpointer object) const noexcept { g_object_unref(object); }
};
template <class Object>
using GObjectPtr = std::unique_ptr<Object, GObjectDeleter>;

struct DescriptionDeleter {
  void operator()(PangoFontDescription* description) const noexcept {
    pango_font_description_free(description);
  }
};
using DescriptionPtr = std::unique_ptr<PangoFontDescription, DescriptionDeleter>;

/// Picture of a character in a font.
struct Glyph {
  std::uint32_t index = 0;  ///< in the font; 0: it has none for the character
  double advance = 0;       ///< in CSS pixels, from the character's start to that of the next
};

/// A font of a workbook as it is drawn: a free font in its place where the machine lacks it.
///
/// Widths of characters are whole CSS pixels, as spreadsheet programs lay texts out, so that texts
/// fill their columns alike at every scale and in every format.
/// Threads: needs exclusive access.
class Typeface {
public:
  /// `fontMap` and `context` are borrowed for the construction alone.
  Typeface(Font const& font, PangoFontMap& fontMap, PangoContext& context);

  /// For laying out by Pango.
  [[nodiscard]] PangoFontDescription const& getDescription() const noexcept {
    return *_description;
  }
  /// Makes it the font of the context.
  void use(cairo_t* cairo) const noexcept;

  /// The glyph of a character that needs no shaping. Constant time, but for the first call.
  [[nodiscard]] Glyph findGlyph(char32_t character);

  // In CSS pixels.
  [[nodiscard]] double getSize() const noexcept { return _size; }
  /// From the top of a line to its baseline, with the leading, which lies at the top.
  [[nodiscard]] double getAscent() const noexcept { return _ascent; }
  [[nodiscard]] double getDescent() const noexcept { return _descent; }
  [[nodiscard]] double getLineHeight() const noexcept { return _ascent + _descent; }
  /// From the baseline upwards to that of superscript, or downwards to that of subscript
  /// (negative).
  [[nodiscard]] double getRise() const noexcept { return _rise; }

private:
  [[nodiscard]] Glyph loadGlyph(char32_t character) const;

  static constexpr std::size_t commonCount = 0x180;

  DescriptionPtr _description;
  GObjectPtr<PangoFont> _font;
  cairo_matrix_t _matrix{};
  double _size = 0;
  double _ascent = 0;
  double _descent = 0;
  double _rise = 0;
  std::array<Glyph, commonCount> _common{};
  std::array<bool, commonCount> _isKnown{};
  std::unordered_map<char32_t, Glyph> _others;
};

/// Size of the characters of a font in CSS pixels: those of superscript and subscript are smaller.
/// Between 1 and 409 points, the most that spreadsheet programs know; 0 where the size is not
/// positive.
[[nodiscard]] double findPixelSize(Font const& font) noexcept;
/// From the baseline upwards to that of superscript, or downwards to that of subscript (negative).
[[nodiscard]] double findRise(Font const& font) noexcept;
/// The description by which Pango finds a font.
[[nodiscard]] DescriptionPtr describeFont(Font const& font);

}  // namespace Zorv::Render::Draw
