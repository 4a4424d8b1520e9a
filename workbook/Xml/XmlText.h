#pragma once

#include <string>
#include <string_view>

namespace Zorv::Workbook {

/// Replaces the entities and line ends of a text in place (Extensible Markup Language 1.0, 2.11 and
/// 4.1; in attributes also 3.3.3) and sets `end` to its new end.
///
/// Returns null, or a message about what is wrong with the text.
[[nodiscard]] char const* decodeXmlText(char* begin, char*& end, bool isAttribute) noexcept;

[[nodiscard]] constexpr bool isXmlSpace(char character) noexcept {
  return character == ' ' || character == '\t' || character == '\n' || character == '\r';
}

/// The text without leading and trailing spaces.
[[nodiscard]] std::string_view trimXmlSpaces(std::string_view text) noexcept;

/// Replaces `_xHHHH_`, by which workbooks write characters that XML cannot hold
/// (ISO/IEC 29500-1, 22.9.2.19).
[[nodiscard]] std::string unescapeXstring(std::string_view text);

}  // namespace Zorv::Workbook
