#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "DOM/StyleProps.h"
#include "render/Terminal/Escapes.h"
#include "render/Terminal/Glyphs.h"

namespace Zorv::Render {

/// Half-open stretch of characters or lines, counted from 0.
struct Stretch {
  std::size_t begin = 0;
  std::size_t end = 0;

  [[nodiscard]] std::size_t size() const noexcept { return end > begin ? end - begin : 0; }
  [[nodiscard]] bool contains(std::size_t place) const noexcept {
    return begin <= place && place < end;
  }

  friend bool operator==(Stretch const&, Stretch const&) = default;
};

/// Some lines of characters, each with a style. What lies outside of them is left out.
class Canvas {
public:
  /// Spaces with the style.
  Canvas(std::size_t width, Stretch lines, CharacterStyle const& style);

  [[nodiscard]] Stretch const& getLines() const noexcept { return _lines; }

  void setGround(std::size_t line, std::size_t place, DOM::Colour const& colour);

  /// Writes a glyph; its ground stays as it is. A wide one takes the place after it, too, and is
  /// left out where that lies at `end` or beyond.
  void put(std::size_t line, std::size_t place, std::size_t end, Glyph const& glyph,
           CharacterStyle const& style);

  /// Writes a glyph with its ground.
  void putOnGround(std::size_t line, std::size_t place, Glyph const& glyph,
                   CharacterStyle const& style);

  /// True for a space.
  [[nodiscard]] bool isBlank(std::size_t line, std::size_t place) const noexcept;
  [[nodiscard]] std::optional<DOM::Colour> getGround(std::size_t line,
                                                     std::size_t place) const noexcept;

  /// A line with its control sequences; without them, its spaces at the end are left out.
  [[nodiscard]] std::string writeLine(std::size_t line, ColourDepth depth) const;

private:
  struct Place {
    std::string text = " ";  ///< empty: the second half of the glyph before it
    CharacterStyle style{};
  };

  [[nodiscard]] Place* find(std::size_t line, std::size_t place) noexcept;
  [[nodiscard]] Place const* find(std::size_t line, std::size_t place) const noexcept;

  std::size_t _width;
  Stretch _lines;
  std::vector<Place> _places;
};

}  // namespace Zorv::Render
