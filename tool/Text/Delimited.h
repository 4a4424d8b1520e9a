#pragma once

#include <string>
#include <string_view>

namespace Zorv::Tool {

/// Separated values: a comma, with quotes as RFC 4180 has them, or a tab.
enum class Separator : char { Comma = ',', Tab = '\t' };

/// Appends a text as one field, made printable. In a field after a comma, quotes surround a text
/// that holds a comma or a quote; a printable text holds no tab.
void appendField(std::string& line, std::string_view text, Separator separator);

}  // namespace Zorv::Tool
