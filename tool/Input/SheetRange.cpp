#include "tool/Input/SheetRange.h"

#include "DOM/A1Notation.h"

namespace Zorv::Tool {

namespace {

/// A sheet's name without its apostrophes, if it has any; nothing if they do not match.
std::optional<std::string> readSheetName(std::string_view text) {
  if (!text.starts_with('\'')) {
    return text.empty() ? std::nullopt : std::optional(std::string(text));
  }
  if (text.size() < 3 || !text.ends_with('\'')) {
    return std::nullopt;
  }
  text = text.substr(1, text.size() - 2);
  std::string name;
  for (std::size_t i = 0; i < text.size(); ++i) {
    name += text[i];
    if (text[i] == '\'' && (++i == text.size() || text[i] != '\'')) {
      return std::nullopt;
    }
  }
  return name;
}

}  // namespace

std::optional<SheetRange> parseSheetRange(std::string_view text) {
  SheetRange result;
  // An address holds no exclamation mark, but a sheet's name may.
  if (auto const mark = text.rfind('!'); mark != std::string_view::npos) {
    result.sheet = readSheetName(text.substr(0, mark));
    if (!result.sheet) {
      return std::nullopt;
    }
    text.remove_prefix(mark + 1);
  }
  auto const range = DOM::A1Notation::parseRange(text);
  if (!range) {
    return std::nullopt;
  }
  result.range = *range;
  return result;
}

}  // namespace Zorv::Tool
