#include "render/Terminal/Canvas.h"

#include <utility>

namespace Zorv::Render {

Canvas::Canvas(std::size_t width, Stretch lines, CharacterStyle const& style)
    : _width(width), _lines(lines), _places(width * lines.size(), Place{.style = style}) {}

void Canvas::setGround(std::size_t line, std::size_t place, DOM::Colour const& colour) {
  if (auto* const found = find(line, place)) {
    found->style.ground = colour;
  }
}

void Canvas::put(std::size_t line, std::size_t place, std::size_t end, Glyph const& glyph,
                 CharacterStyle const& style) {
  auto* const found = find(line, place);
  if (found == nullptr || place + glyph.width > end) {
    return;
  }
  auto const ground = found->style.ground;
  *found = {glyph.text, style};
  found->style.ground = ground;
  if (auto* const second = glyph.width > 1 ? find(line, place + 1) : nullptr) {
    *second = {std::string(), found->style};
  }
}

void Canvas::putOnGround(std::size_t line, std::size_t place, Glyph const& glyph,
                         CharacterStyle const& style) {
  if (auto* const found = find(line, place)) {
    *found = {glyph.text, style};
  }
}

bool Canvas::isBlank(std::size_t line, std::size_t place) const noexcept {
  auto const* const found = find(line, place);
  return found != nullptr && found->text == " ";
}

std::optional<DOM::Colour> Canvas::getGround(std::size_t line, std::size_t place) const noexcept {
  auto const* const found = find(line, place);
  return found != nullptr ? found->style.ground : std::nullopt;
}

std::string Canvas::writeLine(std::size_t line, ColourDepth depth) const {
  std::string text;
  CharacterStyle const* style = nullptr;
  for (std::size_t at = 0; at < _width; ++at) {
    auto const& place = *find(line, at);
    if (depth != ColourDepth::None && (style == nullptr || *style != place.style)) {
      style = &place.style;
      appendStyle(text, *style, depth);
    }
    text += place.text;
  }
  if (depth == ColourDepth::None) {
    text.erase(text.find_last_not_of(' ') + 1);
  } else {
    text += endOfStyle;
  }
  return text;
}

Canvas::Place* Canvas::find(std::size_t line, std::size_t place) noexcept {
  return const_cast<Place*>(std::as_const(*this).find(line, place));
}

Canvas::Place const* Canvas::find(std::size_t line, std::size_t place) const noexcept {
  return _lines.contains(line) && place < _width ? &_places[(line - _lines.begin) * _width + place]
                                                 : nullptr;
}

}  // namespace Zorv::Render
