#include "Formulas/Parsing/LocalNames.h"

#include <algorithm>
#include <ranges>

#include "Formulas/Parsing/Characters.h"

namespace Zorv::Formulas {

std::optional<std::uint32_t> LocalNames::find(std::string_view name) const {
  if (_names.empty()) {
    return std::nullopt;
  }
  auto const innermostFirst = std::views::reverse(_names);
  auto const found =
      std::ranges::find(innermostFirst, toKey(name), &std::pair<std::string, std::uint32_t>::first);
  return found == innermostFirst.end() ? std::nullopt : std::optional(found->second);
}

std::string LocalNames::toKey(std::string_view name) {
  constexpr std::string_view prefix = "_XLPM.";
  std::string key = toUpperAscii(name);
  if (key.starts_with(prefix)) {
    key.erase(0, prefix.size());
  }
  return key;
}

}  // namespace Zorv::Formulas
