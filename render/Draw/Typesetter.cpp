#include "render/Draw/Typesetter.h"

#include "Utils/Exceptions.h"

namespace Zorv::Render::Draw {

FontOptionsPtr makeFontOptions() {
  FontOptionsPtr options(cairo_font_options_create());
  cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_GRAY);
  cairo_font_options_set_hint_style(options.get(), CAIRO_HINT_STYLE_SLIGHT);
  // Pango rounds the widths; the heights stay exact.
  cairo_font_options_set_hint_metrics(options.get(), CAIRO_HINT_METRICS_OFF);
  checkStatus(cairo_font_options_status(options.get()));
  return options;
}

Typesetter::Typesetter() : _fontMap(pango_cairo_font_map_new()) {
  if (_fontMap == nullptr) {
    throw BaseRuntimeError("cannot draw: no fonts can be loaded");
  }
  // Sizes of fonts are in pixels already.
  pango_cairo_font_map_set_resolution(PANGO_CAIRO_FONT_MAP(_fontMap.get()), 96);
  _context.reset(pango_font_map_create_context(_fontMap.get()));
  pango_cairo_context_set_font_options(_context.get(), makeFontOptions().get());
  pango_context_set_round_glyph_positions(_context.get(), TRUE);
  _layout.reset(pango_layout_new(_context.get()));
}

Typeface& Typesetter::getTypeface(Font const& font) {
  Key key(font.name, findPixelSize(font), font.bold, font.italic, font.verticalRun);
  auto const found = _typefaces.find(key);
  if (found != _typefaces.end()) {
    return found->second;
  }
  if (_typefaces.size() == mostTypefaces) {
    _typefaces.clear();
  }
  return _typefaces.try_emplace(std::move(key), font, *_fontMap, *_context).first->second;
}

}  // namespace Zorv::Render::Draw
