#include "render/Html/StyleSheet.h"

#include <fmt/format.h>

namespace Zorv::Render {

std::string const& StyleSheet::classOf(std::string const& declarations) {
  auto const [entry, isNew] = _names.try_emplace(declarations);
  if (isNew) {
    entry->second = fmt::format("s{}", _names.size());
    _text += fmt::format(".{}{{{}}}\n", entry->second, declarations);
  }
  return entry->second;
}

}  // namespace Zorv::Render
