#pragma once

#include <cstddef>
#include <vector>

#include "render/Picture.h"
#include "render/Terminal/Glyphs.h"

namespace Zorv::Render {

/// True where letters stand one below the other: stacked, or rotated by more than half of a right
/// angle.
[[nodiscard]] bool isUpright(Look const& look) noexcept;

/// True where the text may take several lines.
[[nodiscard]] bool wraps(Look const& look, PictureCell const& cell) noexcept;

/// The lines of a cell's text in its place. The runs of the glyphs are those of a rich text.
[[nodiscard]] std::vector<GlyphLine> layOutCell(SheetPicture const& sheet, PictureCell const& cell,
                                                std::size_t width, std::size_t lines);

}  // namespace Zorv::Render
