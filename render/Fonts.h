#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace Zorv::Render {

/// The families to look for when a workbook asks for a font: its own name, a free font of the same
/// widths where there is one, and a generic family (`sans-serif`, `serif`, `monospace`, `cursive`)
/// at the end. Case does not count.
///
/// A name that cannot be that of a font is left out: one that is empty, longer than 64 bytes, or
/// has control characters, commas, semicolons, quotes, backslashes, or one of `<>{}()&`. So the
/// names may stand in a list of families of CSS, between quotes; a generic family stands without
/// them. Linear in the number of known fonts.
[[nodiscard]] std::vector<std::string> listFontFamilies(std::string_view name);

}  // namespace Zorv::Render
