#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace Zorv::Render {

/// A character with its marks, as a terminal draws it.
struct Glyph {
  std::string text;       ///< UTF-8; never a control character
  std::size_t width = 1;  ///< columns: 1 or 2
  std::size_t run = 0;    ///< index of the part of the text that it comes from
};

/// Splits any text into glyphs, at most `most`; the rest of the text is not looked at.
///
/// Terminals disagree about how wide emoji are that are made of several. So joiners, variation
/// selectors and skin tones in them are left out: what remains is as wide everywhere. Marks beyond
/// a few on one character are left out, too. LF stays, as a glyph of no width.
[[nodiscard]] std::vector<Glyph> splitIntoGlyphs(std::string_view text, std::size_t most);

using GlyphLine = std::vector<Glyph>;

[[nodiscard]] std::size_t measureWidth(GlyphLine const& line) noexcept;

/// The place for a text.
struct TextSpace {
  std::size_t width = 1;  ///< columns, at least 1
  std::size_t lines = 1;  ///< at least 1
  bool wraps = false;     ///< at LF, spaces, beside wide characters, and inside of long words
};

/// The lines of a text, whose parts follow each other. If it does not wrap, there is one line, in
/// which LF is a space. Where something is cut, the last glyph that fits gives way to an ellipsis.
[[nodiscard]] std::vector<GlyphLine> breakIntoLines(std::vector<std::string_view> const& parts,
                                                    TextSpace const& space);

/// The UTF-8 of a character.
[[nodiscard]] std::string toUtf8(char32_t character);

}  // namespace Zorv::Render
