#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <pugixml.hpp>

#include "workbook/Limits.h"
#include "workbook/Package/Archive.h"

namespace Zorv::Workbook {

/// Reference of one part to another (ISO/IEC 29500-2, 9.3).
struct Relationship {
  std::string id;
  std::string kind;         ///< last segment of its type: "worksheet", "styles", ...
  std::string target;       ///< the part that it refers to, without a leading slash
  bool isExternal = false;  ///< the target is outside the file, and kept as written
};

/// Relationships of one part to other parts and to things outside the file.
class Relationships {
public:
  /// Reads the relationships of a part or, for the empty name, of the package. Throws PartError if
  /// they are damaged.
  Relationships(Archive& archive, std::string_view part, Limits const& limits);

  /// The relationship with that identifier, or null. Costs a look into a hash table.
  [[nodiscard]] Relationship const* find(std::string_view id) const;
  /// The same for relationships to things outside the file.
  [[nodiscard]] Relationship const* findExternal(std::string_view id) const;
  /// The first relationship of that kind, or null.
  [[nodiscard]] Relationship const* findKind(std::string_view kind) const noexcept;

private:
  [[nodiscard]] Relationship const* findAny(std::string_view id) const;
  void add(std::string_view part, pugi::xml_node element);

  std::vector<Relationship> _relationships;
  std::unordered_map<std::string, std::size_t> _indexById;  ///< the first of each identifier
};

/// Resolves a relationship's target, which is relative to the part that has the relationship.
[[nodiscard]] std::string resolveTarget(std::string_view part, std::string_view target);

}  // namespace Zorv::Workbook
