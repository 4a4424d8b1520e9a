#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "render/Draw/Typesetter.h"

namespace Zorv::Render::Draw {

/// How the lines of a paragraph are set.
struct ParagraphSetting {
  /// At which lines are wrapped, in CSS pixels; nothing: only where the text has line ends.
  std::optional<double> width;
  /// How lines that are narrower than the others lie.
  PangoAlignment alignment = PANGO_ALIGN_LEFT;
  bool isJustified = false;
  bool justifiesLastLine = false;
  bool isRightToLeft = false;
  /// The height that the lines are spread over; nothing: they follow each other closely.
  std::optional<double> height;
};

/// Text laid out by Pango: of several lines, several fonts, or any script.
///
/// Ownership: borrows the typesetter, whose one layout it uses; so there is one paragraph at a
/// time.
class Paragraph {
public:
  /// `runs`: the parts of the text, if they have fonts of their own. Costs some microseconds for
  /// each word.
  Paragraph(Typesetter& typesetter, std::string_view text, Font const& font,
            std::span<TextRun const> runs, ParagraphSetting const& setting);

  // In CSS pixels.
  [[nodiscard]] double getWidth() const noexcept { return _width; }
  [[nodiscard]] double getHeight() const noexcept { return _height; }
  [[nodiscard]] double getAscent() const noexcept { return _ascent; }
  [[nodiscard]] int countLines() const noexcept {
    return pango_layout_get_line_count(_typesetter.getLayout());
  }

  /// Shows the paragraph with its top left corner at a place. Characters without a colour of their
  /// own have the one that is set. All of it is shown, whatever lies outside of `from` to `to`.
  void show(cairo_t* cairo, double left, double top, double from, double to) const;

private:
  void setText(std::string_view text) const;
  void setLines(ParagraphSetting const& setting) const;
  void justifyLastLine(ParagraphSetting const& setting) const;
  void measure(Typeface const& typeface, ParagraphSetting const& setting);

  Typesetter& _typesetter;
  double _leading = 0;  ///< above the first line
  double _width = 0;
  double _height = 0;
  double _ascent = 0;
};

}  // namespace Zorv::Render::Draw
