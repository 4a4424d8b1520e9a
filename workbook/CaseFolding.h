#pragma once

#include <string>
#include <string_view>

namespace Zorv::Workbook {

/// Case-folded text: equal for names that differ only in letter case.
[[nodiscard]] std::string foldCase(std::string_view text);

}  // namespace Zorv::Workbook
