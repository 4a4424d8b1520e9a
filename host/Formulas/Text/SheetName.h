#pragma once

#include <string>
#include <string_view>

namespace Zorv::Formulas {

/// A sheet's name and an exclamation mark, as a reference to the sheet begins; in apostrophes where
/// formulas need them.
[[nodiscard]] std::string writeSheetPrefix(std::string_view name);

}  // namespace Zorv::Formulas
