#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

namespace Zorv::Tool {

enum class ColourChoice : std::uint8_t { Auto, Always, Never };

/// What the stream that takes the result can show.
struct Terminal {
  std::optional<std::size_t> width;  ///< columns; nothing where the stream is no terminal
  bool hasColours = false;           ///< 24-bit colours may be written

  /// Looks at an open file descriptor and the environment: `COLUMNS` names the width of a terminal
  /// that does not tell it; `NO_COLOR` (no-color.org) and `TERM=dumb` mean no colours, unless the
  /// choice is Always.
  [[nodiscard]] static Terminal find(int descriptor, ColourChoice colour) noexcept;
};

}  // namespace Zorv::Tool
