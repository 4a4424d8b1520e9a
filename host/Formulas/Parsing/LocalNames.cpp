#include "Formulas/Parsing/LocalNames.h"

#include <algorithm>

namespace Zorv::Formulas {

std::optional<std::uint32_t> LocalNames::find(std::string_view name) const {
  if (_names.empty()) {
    return std::nullopt;
  }
  // The innermost of several equal names hides the others.
  auto const found = std::find_if(
      _names.rbegin(), _names.rend(),
      [key = toAsciiUpper(toPlainName(name))](auto const& given) { return given.first == key; });
  return found == _names.rend() ? std::nullopt : std::optional(found->second);
}

std::string LocalNames::toPlainName(std::string_view name) {
  constexpr std::string_view prefix = "_XLPM.";
  bool const hasPrefix =
      name.size() > prefix.size() && toAsciiUpper(name.substr(0, prefix.size())) == prefix;
  return std::string(name.substr(hasPrefix ? prefix.size() : 0));
}

}  // namespace Zorv::Formulas
