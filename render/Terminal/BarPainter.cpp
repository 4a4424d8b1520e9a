#include "render/Terminal/BarPainter.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "render/Terminal/FillColour.h"
#include "render/Terminal/Glyphs.h"

namespace Zorv::Render {

namespace {

constexpr DOM::Colour paperOfBar{255, 255, 255};
constexpr double fading = 0.75;  // how white the end of a fading bar is

/// A part of a character, in eighths from its left edge.
struct Eighths {
  long from = 0;
  long to = 0;

  [[nodiscard]] bool isEmpty() const noexcept { return from >= to; }
  [[nodiscard]] bool isFull() const noexcept { return from == 0 && to == 8; }
};

/// The block that begins at the left edge of its character.
char32_t findLeftBlock(long eighths) noexcept {
  return static_cast<char32_t>(U'█' + 8 - std::clamp(eighths, 1L, 8L));
}

/// Draws one bar.
class BarDrawing {
public:
  BarDrawing(Visuals::ShownBar const& bar, BarPlace const& place, bool hasColours, Canvas& canvas)
      : _bar(bar), _place(place), _hasColours(hasColours), _canvas(canvas) {
    auto const width = static_cast<double>(place.places.size());
    _from = std::lround(bar.extent.from * width * 8);
    _to = std::max(_from, std::lround(bar.extent.to * width * 8));
    if (place.fromRight) {
      auto const end = static_cast<long>(place.places.size()) * 8;
      auto const from = end - _to;
      _to = end - _from;
      _from = from;
    }
  }

  void draw() {
    for (std::size_t line = _place.lines.begin; line < _place.lines.end; ++line) {
      for (std::size_t place = 0; place < _place.places.size(); ++place) {
        draw(line, place);
      }
      drawAxis(line);
    }
  }

private:
  void draw(std::size_t line, std::size_t index) {
    auto const start = static_cast<long>(index) * 8;
    Eighths const part{std::clamp(_from - start, 0L, 8L), std::clamp(_to - start, 0L, 8L)};
    if (part.isEmpty()) {
      return;
    }
    std::size_t const place = _place.places.begin + index;
    if (!_hasColours) {
      drawBlock(line, place, part);
      return;
    }
    auto const colour = findColour(start + 4);
    if (part.isFull()) {
      _canvas.setGround(line, place, colour);
    } else if (part.from == 0) {
      _canvas.put(line, place, place + 1, {toUtf8(findLeftBlock(part.to)), 1, 0}, {.ink = colour});
    } else {
      // There are no blocks at the right edge, so that the rest of the character is drawn.
      _canvas.putOnGround(line, place, {toUtf8(findLeftBlock(part.from)), 1, 0},
                          {.ink = _canvas.getGround(line, place), .ground = colour});
    }
  }

  void drawBlock(std::size_t line, std::size_t place, Eighths part) {
    char32_t const block = part.from == 0 ? findLeftBlock(part.to) : U'▐';
    _canvas.put(line, place, place + 1, {toUtf8(block), 1, 0}, {});
  }

  void drawAxis(std::size_t line) {
    if (!_bar.extent.axis || _place.places.size() == 0) {
      return;
    }
    auto const width = static_cast<double>(_place.places.size());
    double const along = _place.fromRight ? 1 - *_bar.extent.axis : *_bar.extent.axis;
    auto const index = static_cast<std::size_t>(std::clamp(along * width, 0.0, width - 1));
    std::size_t const place = _place.places.begin + index;
    auto const start = static_cast<long>(index) * 8;
    if (_to > start && _from < start + 8) {
      return;  // the bar itself shows where it begins
    }
    CharacterStyle style;
    if (_hasColours) {
      style.ink = _bar.bar->axisColour.value_or(DOM::Colour{0, 0, 0});
    }
    _canvas.put(line, place, place + 1, {"│", 1, 0}, style);
  }

  /// The colour at a place, counted in eighths. A fading bar is deepest where it begins.
  [[nodiscard]] DOM::Colour findColour(long eighth) const noexcept {
    auto const colour = _bar.getFill() ? *_bar.getFill() : _bar.getBorder().value_or(paperOfBar);
    if (!_bar.bar->isGradient || _to <= _from) {
      return colour;
    }
    double const part = std::clamp(
        static_cast<double>(eighth - _from) / static_cast<double>(_to - _from), 0.0, 1.0);
    bool const beginsAtEnd = (_bar.isNegative && _bar.extent.axis) != _place.fromRight;
    return mix(colour, paperOfBar, fading * (beginsAtEnd ? 1 - part : part));
  }

  Visuals::ShownBar const& _bar;
  BarPlace const& _place;
  bool _hasColours;
  Canvas& _canvas;
  long _from = 0;  ///< eighths from the left edge of the cell
  long _to = 0;
};

}  // namespace

void paintBar(Visuals::ShownBar const& bar, BarPlace const& place, bool hasColours,
              Canvas& canvas) {
  BarDrawing(bar, place, hasColours, canvas).draw();
}

}  // namespace Zorv::Render
