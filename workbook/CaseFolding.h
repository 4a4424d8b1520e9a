#pragma once

#include <string>
#include <string_view>

namespace Zorv::Workbook {

/// The text by which names that differ in case alone are found as one.
[[nodiscard]] std::string foldCase(std::string_view text);

}  // namespace Zorv::Workbook
