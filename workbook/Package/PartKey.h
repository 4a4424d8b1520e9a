#pragma once

#include <algorithm>
#include <string>
#include <string_view>

#include "Utils/CaseFolding.h"

namespace Zorv::Workbook {

/// Key that is equal for names of the same part: letter case does not matter, backslashes count as
/// slashes, and slashes at the beginning as none.
[[nodiscard]] inline std::string toPartKey(std::string_view part) {
  std::string key = foldCase(part);
  std::replace(key.begin(), key.end(), '\\', '/');
  key.erase(0, std::min(key.find_first_not_of('/'), key.size()));
  return key;
}

}  // namespace Zorv::Workbook
