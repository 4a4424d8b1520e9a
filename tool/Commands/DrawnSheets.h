#pragma once

#include <vector>

#include "render/BuildPicture.h"
#include "render/Picture.h"
#include "tool/Commands/Commands.h"
#include "tool/Input/Selection.h"

namespace Zorv::Tool {

/// The selected sheets that are drawn, one entry for each selected range. Hidden sheets, and sheets
/// that have no cells by their nature, such as charts, are drawn only if `--sheet` or `--range`
/// names them.
[[nodiscard]] std::vector<Render::SheetSelection> listDrawnSheets(Selection const& selection);

/// The picture of some sheets. Tells what could not be drawn. It borrows the document.
[[nodiscard]] Render::Picture makePicture(CommandContext const& context,
                                          std::vector<Render::SheetSelection> sheets);

}  // namespace Zorv::Tool
