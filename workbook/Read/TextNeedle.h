#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Zorv::Workbook {

/// The text that a text rule looks for, as written in its formula: `"Grain"` or `$B$1` in
/// `NOT(ISERROR(SEARCH($B$1,A1)))`, `ISERROR(SEARCH($B$1,A1))`, `LEFT(A1,LEN($B$1))=$B$1` and
/// `RIGHT(A1,LEN($B$1))=$B$1`. Nothing for a formula of any other shape.
[[nodiscard]] std::optional<std::string> findNeedle(std::string_view formula);

/// The value of a string constant (`"say ""yes"""`); nothing if the formula is anything but one
/// string constant.
[[nodiscard]] std::optional<std::string> parseStringConstant(std::string_view formula);

}  // namespace Zorv::Workbook
