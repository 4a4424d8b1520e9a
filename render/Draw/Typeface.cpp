#include "render/Draw/Typeface.h"

#include <hb.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "Utils/Exceptions.h"
#include "render/Fonts.h"

namespace Zorv::Render::Draw {

namespace {

constexpr double ofRaisedRun = 0.65;

double findLineSize(Font const& font) noexcept {
  constexpr double pixelsPerPoint = 96.0 / 72.0;
  constexpr double largest = 409;
  // The comparison is false for what is not a number.
  return font.size > 0 ? std::clamp(font.size, 1.0, largest) * pixelsPerPoint : 0;
}

}  // namespace

double findPixelSize(Font const& font) noexcept {
  bool const isRaised = font.verticalRun != DOM::VerticalRun::Baseline;
  return findLineSize(font) * (isRaised ? ofRaisedRun : 1);
}

double findRise(Font const& font) noexcept {
  constexpr double ofSuperscript = 0.33;
  constexpr double ofSubscript = -0.14;
  switch (font.verticalRun) {
    case DOM::VerticalRun::Superscript:
      return findLineSize(font) * ofSuperscript;
    case DOM::VerticalRun::Subscript:
      return findLineSize(font) * ofSubscript;
    case DOM::VerticalRun::Baseline:
      break;
  }
  return 0;
}

DescriptionPtr describeFont(Font const& font) {
  std::string families;
  for (std::string const& family : listFontFamilies(font.name)) {
    families += families.empty() ? family : "," + family;
  }
  DescriptionPtr description(pango_font_description_new());
  pango_font_description_set_family(description.get(), families.c_str());
  pango_font_description_set_absolute_size(description.get(), findPixelSize(font) * PANGO_SCALE);
  pango_font_description_set_weight(description.get(),
                                    font.bold ? PANGO_WEIGHT_BOLD : PANGO_WEIGHT_NORMAL);
  pango_font_description_set_style(description.get(),
                                   font.italic ? PANGO_STYLE_ITALIC : PANGO_STYLE_NORMAL);
  return description;
}

Typeface::Typeface(Font const& font, PangoFontMap& fontMap, PangoContext& context)
    : _description(describeFont(font)),
      _font(pango_font_map_load_font(&fontMap, &context, _description.get())),
      _size(findPixelSize(font)),
      _rise(findRise(font)) {
  auto* const scaled =
      _font != nullptr ? pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(_font.get())) : nullptr;
  if (scaled == nullptr) {
    throw BaseRuntimeError("cannot draw: no font is installed");
  }
  cairo_scaled_font_get_font_matrix(scaled, &_matrix);
  cairo_font_extents_t extents{};
  cairo_scaled_font_extents(scaled, &extents);
  checkStatus(cairo_scaled_font_status(scaled));
  double const toLine = _size > 0 ? findLineSize(font) / _size : 1;
  _descent = extents.descent * toLine;
  _ascent = std::max(extents.ascent, extents.height - extents.descent) * toLine;
}

void Typeface::use(cairo_t* cairo) const noexcept {
  auto* const scaled = pango_cairo_font_get_scaled_font(PANGO_CAIRO_FONT(_font.get()));
  cairo_set_font_face(cairo, cairo_scaled_font_get_font_face(scaled));
  cairo_set_font_matrix(cairo, &_matrix);
}

Glyph Typeface::findGlyph(char32_t character) {
  if (character < commonCount) {
    if (!_isKnown[character]) {
      _common[character] = loadGlyph(character);
      _isKnown[character] = true;
    }
    return _common[character];
  }
  auto const [place, isNew] = _others.try_emplace(character);
  if (isNew) {
    place->second = loadGlyph(character);
  }
  return place->second;
}

Glyph Typeface::loadGlyph(char32_t character) const {
  hb_font_t* const font = pango_font_get_hb_font(_font.get());
  hb_codepoint_t index = 0;
  if (hb_font_get_nominal_glyph(font, character, &index) == 0) {
    return {};
  }
  double const advance = hb_font_get_glyph_h_advance(font, index);
  return {index, std::round(advance / PANGO_SCALE)};
}

}  // namespace Zorv::Render::Draw
