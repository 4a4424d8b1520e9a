#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "DOM/StyleProps.h"

// Colours and styles of characters as control sequences (SGR of ECMA-48; colours as in ISO/IEC
// 8613-6).
namespace Zorv::Render {

/// Colours that a terminal can show.
enum class ColourDepth : std::uint8_t {
  None,     ///< no control sequence may be written
  Indexed,  ///< the 256 colours of xterm
  Direct,   ///< 24-bit colours
};

/// Appearance of a character.
struct CharacterStyle {
  std::optional<DOM::Colour> ink = std::nullopt;     ///< nothing: the terminal's own
  std::optional<DOM::Colour> ground = std::nullopt;  ///< nothing: the terminal's own
  bool bold = false;
  bool italic = false;
  DOM::Underline underline = DOM::Underline::None;
  bool strikethrough = false;

  friend bool operator==(CharacterStyle const&, CharacterStyle const&) = default;
};

/// Ends what appendStyle() began.
inline constexpr std::string_view endOfStyle = "\x1B[0m";

/// Appends the sequence after which characters have a style, whatever style came before. Opacity
/// does not show. Nothing for ColourDepth::None.
void appendStyle(std::string& text, CharacterStyle const& style, ColourDepth depth);

/// The nearest of the colours 16 to 255 of xterm: a cube of 6 x 6 x 6 colours and a ramp of greys.
[[nodiscard]] std::uint8_t toIndexedColour(DOM::Colour const& colour) noexcept;

}  // namespace Zorv::Render
