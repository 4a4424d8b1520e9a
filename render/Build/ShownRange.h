#pragma once

#include <cstdint>

#include "Utils/TableRange.h"
#include "render/Build/CellTexts.h"
#include "render/Build/Looks.h"
#include "render/Build/Resolution.h"
#include "workbook/Sheet.h"

namespace Zorv::Render {

/// The range that shows all that is seen of a sheet: cells with a value or a visible style, merged
/// cells, positions that conditional formats make visible, and texts that run to the right
/// out of these. It begins at the first cell of the sheet unless all lies far from there. Empty if
/// nothing is seen. Linear in the cells and the decided positions.
[[nodiscard]] TableRange findShownRange(Workbook::Sheet const& sheet, Resolution const& resolution,
                                        Looks& looks, CellTexts const& texts);

/// The first columns, and of these the first rows, that have no more than so many positions.
[[nodiscard]] TableRange limitPositions(TableRange const& range, std::uint64_t most) noexcept;

}  // namespace Zorv::Render
