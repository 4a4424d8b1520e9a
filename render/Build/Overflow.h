#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "render/Build/ShownLines.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// Content at a position of a row, for texts that need more room than their cell has.
enum class Room : std::uint8_t {
  Free,      ///< empty
  Centred,   ///< empty, and part of a selection that texts are centred across
  Occupied,  ///< by a value or a merged cell
};

/// A text that may run over, of one cell of a row.
struct RunningText {
  PictureCell* cell = nullptr;
  double width = 0;  ///< of its text, in pixels
};

/// Finds the empty columns beside a text that it needs: of those to its right, to its left or on
/// both sides, by its alignment. A text that is centred across a selection gets the columns of
/// that. `rooms` has one for each column of the picture; with `rightToLeft`, the columns follow
/// each other to the left. Linear in the columns that it gets.
void findFreeColumns(RunningText const& text, std::span<Room const> rooms,
                     ShownLines const& columns, bool rightToLeft);

}  // namespace Zorv::Render
