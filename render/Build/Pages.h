#pragma once

#include <cstddef>

#include "render/Build/SheetBuilder.h"
#include "render/Build/ShownLines.h"
#include "render/Picture.h"

namespace Zorv::Render {

/// How a sheet is laid out on paper, in the lines of its picture.
[[nodiscard]] PageSetup makePageSetup(BuildState const& state, std::size_t sheet,
                                      ShownLines const& rows, ShownLines const& columns);

}  // namespace Zorv::Render
