#pragma once

#include <cstddef>
#include <set>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "workbook/Read/Values.h"

namespace Zorv::Workbook {

/// Differential formats of the styles part, and which of them the file refers to: rules, tables,
/// styles of tables, filters and sort orders.
class FormatUses {
public:
  void setCount(std::size_t count) noexcept { _count = count; }

  /// Notes an index as an attribute has it; any other text is ignored.
  void note(std::string_view index) {
    if (auto const number = parseInteger(index); number && *number >= 0) {
      _used.insert(static_cast<std::size_t>(*number));
    }
  }

  /// Notes every attribute of an element, and of what it contains, whose name ends in `dxfId`.
  void noteAll(pugi::xml_node element) {
    for (pugi::xml_attribute const attribute : element.attributes()) {
      std::string_view const name = attribute.name();
      if (name.ends_with("dxfId") || name.ends_with("DxfId")) {
        note(attribute.value());
      }
    }
    for (pugi::xml_node const child : element) {
      noteAll(child);
    }
  }

  /// The file has parts that may refer to differential formats and are not read.
  void setUnknown() noexcept { _isUnknown = true; }

  /// Indices that nothing refers to, ascending; none if that is not known.
  [[nodiscard]] std::vector<std::size_t> findUnused() const {
    std::vector<std::size_t> unused;
    for (std::size_t index = 0; index < _count && !_isUnknown; ++index) {
      if (!_used.contains(index)) {
        unused.push_back(index);
      }
    }
    return unused;
  }

private:
  std::size_t _count = 0;
  std::set<std::size_t> _used;
  bool _isUnknown = false;
};

}  // namespace Zorv::Workbook
