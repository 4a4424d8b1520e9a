#include "render/Draw/PlainLine.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <optional>

namespace Zorv::Render::Draw {

namespace {

struct CharacterBlock {
  char32_t first;
  char32_t last;
};

/// Characters that look the same whatever stands beside them, in scripts from left to right.
constexpr std::array plainBlocks{
    CharacterBlock{0x20, 0x7E},     CharacterBlock{0xA0, 0xAC},      // Latin
    CharacterBlock{0xAE, 0x2AF},                                     // Latin
    CharacterBlock{0x370, 0x482},   CharacterBlock{0x48A, 0x52F},    // Greek, Cyrillic
    CharacterBlock{0x1E00, 0x1FFF},                                  // Latin, Greek
    CharacterBlock{0x2010, 0x2027}, CharacterBlock{0x2030, 0x205E},  // punctuation
    CharacterBlock{0x20A0, 0x20CF}, CharacterBlock{0x2100, 0x23FF},  // currencies, symbols
    CharacterBlock{0x2500, 0x25FF},                                  // lines and shapes
};

bool isPlain(char32_t character) noexcept {
  constexpr char32_t lastOfAscii = 0x7E;
  if (character <= lastOfAscii) {
    return character >= plainBlocks.front().first;
  }
  auto const* const after =
      std::ranges::upper_bound(plainBlocks, character, {}, &CharacterBlock::first);
  return character <= (after - 1)->last;
}

struct DecodedCharacter {
  char32_t character = 0;
  int bytes = 1;
};

/// The first character of a text in UTF-8; nothing if it is malformed or has more than three bytes.
std::optional<DecodedCharacter> decode(std::string_view text) noexcept {
  auto const byte = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  auto const isContinuation = [](unsigned value) { return (value & 0xC0U) == 0x80U; };
  unsigned const lead = byte(0);
  if (lead < 0x80U) {
    return DecodedCharacter{lead, 1};
  }
  if ((lead & 0xE0U) == 0xC0U && isContinuation(byte(1))) {
    return DecodedCharacter{((lead & 0x1FU) << 6U) | (byte(1) & 0x3FU), 2};
  }
  if ((lead & 0xF0U) == 0xE0U && isContinuation(byte(1)) && isContinuation(byte(2))) {
    return DecodedCharacter{((lead & 0x0FU) << 12U) | ((byte(1) & 0x3FU) << 6U) | (byte(2) & 0x3FU),
                            3};
  }
  return std::nullopt;
}

}  // namespace

bool PlainLine::layOut(Typeface& typeface, Font const& font, std::string_view text) {
  _typeface = &typeface;
  _font = &font;
  _text = text;
  _glyphs.clear();
  _clusters.clear();
  _width = 0;
  for (std::size_t place = 0; place < text.size();) {
    auto const decoded = decode(text.substr(place));
    if (!decoded || !isPlain(decoded->character)) {
      return false;
    }
    Glyph const glyph = typeface.findGlyph(decoded->character);
    if (glyph.index == 0) {
      return false;
    }
    _glyphs.push_back({glyph.index, _width, 0});
    _clusters.push_back({decoded->bytes, 1});
    _width += glyph.advance;
    place += static_cast<std::size_t>(decoded->bytes);
  }
  return true;
}

void PlainLine::show(cairo_t* cairo, double left, double top, double from, double to) {
  double const baseline = std::round(top + _typeface->getAscent()) - _typeface->getRise();
  showLines(cairo, left, baseline);
  // Also before the first and behind the last, for strokes that go beyond their advance.
  double const slack = _typeface->getSize();
  auto const placeOf = [&](cairo_glyph_t const& glyph) { return left + glyph.x; };
  auto const first = std::ranges::lower_bound(_glyphs, from - 2 * slack, {}, placeOf);
  auto const last = std::ranges::lower_bound(_glyphs, to + slack, {}, placeOf);
  if (first >= last) {
    return;
  }
  auto const begin = first - _glyphs.begin();
  auto const count = last - first;
  _shown.assign(first, last);
  for (cairo_glyph_t& glyph : _shown) {
    glyph.x += left;
    glyph.y = baseline;
  }
  auto const bytes = [](int sum, cairo_text_cluster_t const& cluster) {
    return sum + cluster.num_bytes;
  };
  auto const cluster = _clusters.begin() + begin;
  int const start = std::accumulate(_clusters.begin(), cluster, 0, bytes);
  int const length = std::accumulate(cluster, cluster + count, 0, bytes);
  _typeface->use(cairo);
  cairo_show_text_glyphs(cairo, _text.data() + start, length, _shown.data(),
                         static_cast<int>(count), &*cluster, static_cast<int>(count),
                         cairo_text_cluster_flags_t{});
}

void PlainLine::showLines(cairo_t* cairo, double left, double baseline) const {
  double const size = _typeface->getSize();
  double const thickness = std::max(1.0, std::round(size / 18));
  auto const line = [&](double below) {
    cairo_rectangle(cairo, left, std::round(baseline + below), _width, thickness);
    cairo_fill(cairo);
  };
  using enum DOM::Underline;
  bool const isLow = _font->underline == SingleAccounting || _font->underline == DoubleAccounting;
  double const below = std::max(1.0, size * (isLow ? 0.17 : 0.09));
  if (_font->underline != None) {
    line(below);
  }
  if (_font->underline == Double || _font->underline == DoubleAccounting) {
    line(below + 2 * thickness);
  }
  if (_font->strikethrough) {
    line(-size * 0.27);
  }
}

}  // namespace Zorv::Render::Draw
