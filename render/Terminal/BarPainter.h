#pragma once

#include "render/Terminal/Canvas.h"
#include "visuals/CellVisuals.h"

namespace Zorv::Render {

/// A bar on the characters of its cell: full ones as their ground, the one at its end as a block.
/// Without colours all of it is blocks.
struct BarPlace {
  Stretch places;
  Stretch lines;
  bool fromRight = false;  ///< the bar's direction begins at the right edge
};

void paintBar(Visuals::ShownBar const& bar, BarPlace const& place, bool hasColours, Canvas& canvas);

}  // namespace Zorv::Render
