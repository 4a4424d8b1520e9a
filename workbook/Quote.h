#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace Zorv::Workbook {

/// A text of the file for a message, in UTF-8: cut after `longest` bytes, at the end of a
/// character, and then ended by `...`.
[[nodiscard]] inline std::string quote(std::string_view text, std::size_t longest = 100) {
  if (text.size() <= longest) {
    return std::string(text);
  }
  std::size_t size = longest;
  while (size > 0 && (static_cast<unsigned char>(text[size]) & 0xC0U) == 0x80) {
    --size;
  }
  return std::string(text.substr(0, size)) + "...";
}

}  // namespace Zorv::Workbook
