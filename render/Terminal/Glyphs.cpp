#include "render/Terminal/Glyphs.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>
#include <utility>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include "words/Printable.h"

namespace Zorv::Render {

namespace {

constexpr std::size_t mostBytesOfGlyph = 24;
constexpr UChar32 joiner = 0x200D;

bool isEmoji(UChar32 character) noexcept {
  constexpr UChar32 firstBeyondAscii = 0x80;
  return character >= firstBeyondAscii &&
         u_hasBinaryProperty(character, UCHAR_EXTENDED_PICTOGRAPHIC) != 0;
}

/// True for a character that makes one emoji of several, or another one.
bool changesEmoji(UChar32 character, UChar32 previous) noexcept {
  constexpr UChar32 firstSelector = 0xFE00;
  constexpr UChar32 lastSelector = 0xFE0F;
  return (firstSelector <= character && character <= lastSelector) ||
         (isEmoji(previous) &&
          (character == joiner || u_hasBinaryProperty(character, UCHAR_EMOJI_MODIFIER) != 0));
}

/// Builds glyphs from characters, one after the other.
class GlyphBuilder {
public:
  explicit GlyphBuilder(std::size_t most) : _most(most) {}

  /// False if no more fit.
  bool add(UChar32 character) {
    if (character == '\n') {
      return push({"\n", 0, 0});
    }
    if (!changesEmoji(character, std::exchange(_previous, character))) {
      auto const text = Words::toPrintable(toUtf8(static_cast<char32_t>(character)));
      std::size_t const width = Words::displayWidth(text);
      return width > 0 ? push({text, width, 0}) : addMark(text);
    }
    return true;
  }

  [[nodiscard]] std::vector<Glyph> take() noexcept { return std::move(_glyphs); }

private:
  bool push(Glyph glyph) {
    if (_glyphs.size() == _most) {
      return false;
    }
    _glyphs.push_back(std::move(glyph));
    return true;
  }

  bool addMark(std::string const& mark) {
    if (_glyphs.empty() || _glyphs.back().width == 0) {
      return push({" " + mark, 1, 0});
    }
    auto& text = _glyphs.back().text;
    if (text.size() + mark.size() <= mostBytesOfGlyph) {
      text += mark;
    }
    return true;
  }

  std::size_t _most;
  UChar32 _previous = 0;
  std::vector<Glyph> _glyphs;
};

Glyph const ellipsisGlyph{"…", 1, 0};

/// Cuts a line that is too wide, or that has more behind it.
void endWithEllipsis(GlyphLine& line, std::size_t width) {
  std::size_t const run = line.empty() ? 0 : line.back().run;
  while (!line.empty() &&
         (measureWidth(line) + ellipsisGlyph.width > width || line.back().text == " ")) {
    line.pop_back();
  }
  line.push_back(ellipsisGlyph);
  line.back().run = run;
}

/// Fills lines with glyphs.
class LineBreaker {
public:
  explicit LineBreaker(TextSpace const& space) : _space(space), _lines(1) {}

  /// False when no line is left for the glyph.
  bool add(Glyph glyph) {
    if (glyph.width == 0) {
      if (_space.wraps) {
        return beginLine();
      }
      glyph = {" ", 1, glyph.run};
    }
    if (_space.wraps && _width + glyph.width > _space.width) {
      if (glyph.text == " ") {
        _spaceHangsOver = true;
        return true;
      }
      if (!(_spaceHangsOver ? beginLine() : beginLineAtWord())) {
        return false;
      }
    }
    _width += glyph.width;
    _lines.back().push_back(std::move(glyph));
    return _space.wraps || _width <= _space.width;
  }

  [[nodiscard]] std::vector<GlyphLine> take(bool isComplete) noexcept {
    if (!isComplete) {
      endWithEllipsis(_lines.back(), _space.width);
    }
    return std::move(_lines);
  }

private:
  bool beginLine() {
    if (_lines.size() == _space.lines) {
      return false;
    }
    _lines.emplace_back();
    _width = 0;
    _spaceHangsOver = false;
    return true;
  }

  /// Takes the word that the line ends with to the next one, if it has others before it.
  bool beginLineAtWord() {
    if (_lines.size() == _space.lines) {
      return false;
    }
    auto& line = _lines.back();
    auto const last = std::find_if(line.rbegin(), line.rend(), [](Glyph const& glyph) {
      return glyph.text == " " || glyph.width > 1;
    });
    auto const word = last == line.rend() ? line.end() : last.base();
    GlyphLine next(std::make_move_iterator(word), std::make_move_iterator(line.end()));
    line.erase(word, line.end());
    while (!line.empty() && line.back().text == " ") {
      line.pop_back();
    }
    _width = measureWidth(next);
    _lines.push_back(std::move(next));
    return true;
  }

  TextSpace _space;
  std::vector<GlyphLine> _lines;
  std::size_t _width = 0;        ///< of the last line
  bool _spaceHangsOver = false;  ///< a space after the last line was left out
};

}  // namespace

std::string toUtf8(char32_t character) {
  std::array<std::uint8_t, U8_MAX_LENGTH> bytes{};
  std::int32_t length = 0;
  auto const code = static_cast<UChar32>(character);
  if (code < 0 || U_IS_SURROGATE(code)) {
    return "\uFFFD";
  }
  U8_APPEND_UNSAFE(bytes, length, code);
  return {bytes.begin(), bytes.begin() + length};
}

std::vector<Glyph> splitIntoGlyphs(std::string_view text, std::size_t most) {
  GlyphBuilder builder(most);
  auto const* const bytes = reinterpret_cast<std::uint8_t const*>(text.data());
  auto const length = static_cast<std::int64_t>(text.size());
  for (std::int64_t at = 0; at < length;) {
    UChar32 character = 0;
    U8_NEXT(bytes, at, length, character);
    if (!builder.add(character)) {
      break;
    }
  }
  return builder.take();
}

std::size_t measureWidth(GlyphLine const& line) noexcept {
  std::size_t width = 0;
  for (Glyph const& glyph : line) {
    width += glyph.width;
  }
  return width;
}

std::vector<GlyphLine> breakIntoLines(std::vector<std::string_view> const& parts,
                                      TextSpace const& space) {
  // A line takes a line end, a space that hangs over, and one glyph that does not fit.
  std::size_t const most = (space.width + 3) * space.lines;
  LineBreaker breaker(space);
  std::size_t count = 0;
  for (std::size_t run = 0; run < parts.size(); ++run) {
    for (Glyph& glyph : splitIntoGlyphs(parts[run], most - count + 1)) {
      glyph.run = run;
      if (++count > most || !breaker.add(std::move(glyph))) {
        return breaker.take(false);
      }
    }
  }
  return breaker.take(true);
}

}  // namespace Zorv::Render
