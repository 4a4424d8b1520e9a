#pragma once

#include <cstdint>
#include <string>

#include "render/Html/Theme.h"

namespace Zorv::Tool {

struct Arguments;

enum class PictureFormat : std::uint8_t { Html, Svg, Png, Pdf };

/// Options of `render`.
struct RenderOptions {
  std::string target;
  PictureFormat format = PictureFormat::Html;  ///< by the target's ending
  double scale = 1;                            ///< 0.1 to 10
  Render::Theme theme = Render::Theme::Auto;
};

/// The options of `render`; those of other commands are the defaults. Throws UsageError for a
/// target whose ending names no format, and for what does not fit the format.
[[nodiscard]] RenderOptions readRenderOptions(Arguments const& arguments);

}  // namespace Zorv::Tool
