#pragma once

#include <cstddef>

#include "render/Build/ShownLines.h"
#include "render/Picture.h"
#include "workbook/Document.h"

namespace Zorv::Render {

/// How a sheet is laid out on paper, in the lines of its picture.
[[nodiscard]] PageSetup makePageSetup(Workbook::Document const& document, std::size_t sheet,
                                      ShownLines const& rows, ShownLines const& columns);

}  // namespace Zorv::Render
