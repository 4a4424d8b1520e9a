#include "Formulas/Parsing/LocalNames.h"

#include <algorithm>

#include "Formulas/Text/Characters.h"

namespace Zorv::Formulas {

std::optional<std::uint32_t> LocalNames::find(std::string_view name) const {
  if (_names.empty()) {
    return std::nullopt;
  }
  // The innermost of several equal names hides the others.
  auto const found =
      std::find_if(_names.rbegin(), _names.rend(),
                   [key = toKey(name)](auto const& given) { return given.first == key; });
  return found == _names.rend() ? std::nullopt : std::optional(found->second);
}

std::string LocalNames::toKey(std::string_view name) {
  constexpr std::string_view prefix = "_XLPM.";
  std::string key = toAsciiUpper(name);
  if (key.starts_with(prefix)) {
    key.erase(0, prefix.size());
  }
  return key;
}

}  // namespace Zorv::Formulas
