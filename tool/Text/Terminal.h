#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "render/Terminal/Escapes.h"

namespace Zorv::Tool {

enum class ColourChoice : std::uint8_t { Auto, Always, Never };

/// Abilities of the stream that takes the result.
struct Terminal {
  std::optional<std::size_t> width;  ///< columns; nothing where the stream is no terminal
  Render::ColourDepth colours = Render::ColourDepth::None;

  [[nodiscard]] bool hasColours() const noexcept { return colours != Render::ColourDepth::None; }

  /// Looks at an open file descriptor and the environment: `COLUMNS` names the width of a terminal
  /// that does not tell it; `NO_COLOR` (no-color.org) and `TERM=dumb` mean no colours, unless the
  /// choice is Always. Terminals with 24-bit colours say so by `COLORTERM` or the end of `TERM`;
  /// the others have 256.
  [[nodiscard]] static Terminal find(int descriptor, ColourChoice colour) noexcept;
};

}  // namespace Zorv::Tool
