#pragma once

#include "render/Draw/Box.h"
#include "render/Draw/Cairo.h"
#include "render/Draw/PixelGrid.h"
#include "render/Picture.h"

// What conditional formats draw beside a text: bars and icons.
namespace Zorv::Render::Draw {

/// Paints the bar of a cell into its place. `rightToLeft`: the sheet is.
void paintBar(cairo_t* cairo, Visuals::ShownBar const& bar, bool rightToLeft, Box const& place,
              PixelGrid const& grid);

/// Where the icon of a cell lies in its place: at the edge at which the sheet begins, or as the
/// cell is aligned if it has no text. As large as the font, and not larger than the cell.
[[nodiscard]] Box placeIcon(PictureCell const& cell, Look const& look, bool rightToLeft,
                            Box const& place) noexcept;

void paintIcon(cairo_t* cairo, Visuals::Icon const& icon, Box const& box);

}  // namespace Zorv::Render::Draw
