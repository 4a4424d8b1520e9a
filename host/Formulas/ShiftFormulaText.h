#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Utils/Export.h"

namespace Zorv::Formulas {

/// A formula's text with its relative references moved, and everything else as it is written: `$`,
/// spaces, letter case, names of sheets.
///
/// `shiftFormulaText("$A1>B$2", 1, 1)` is `$A2>C$2`. Nothing if the text cannot be read or a
/// reference would leave the sheet: a text has no wrapping around. Words are taken for references
/// by their shape and their neighbours alone; callers that need certainty parse the result and
/// compare it with shiftExpr().
[[nodiscard]] ZORV_HOST_EXPORT std::optional<std::string> shiftFormulaText(std::string_view text,
                                                                           int columnOffset,
                                                                           int rowOffset);

}  // namespace Zorv::Formulas
