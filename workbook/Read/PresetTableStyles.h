#pragma once

#include <optional>
#include <string_view>

#include "workbook/Read/Colours.h"
#include "workbook/TableStyle.h"

namespace Zorv::Workbook {

/// A built-in style of tables: `tablestylelight1` to 21, `tablestylemedium1` to 28 and
/// `tablestyledark1` to 11, in small letters. Files name them without saying how they look
/// (ISO/IEC 29500-1, 18.8.40 and annex G.3). Nothing for another name.
[[nodiscard]] std::optional<TableStyle> makePresetTableStyle(std::string_view name,
                                                             Palette const& palette);

}  // namespace Zorv::Workbook
