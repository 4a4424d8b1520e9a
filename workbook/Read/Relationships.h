#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbook/Limits.h"
#include "workbook/Package/Archive.h"

namespace Zorv::Workbook {

/// Reference of one part to another (ISO/IEC 29500-2, 9.3).
struct Relationship {
  std::string id;
  std::string kind;    ///< last segment of its type: "worksheet", "styles", ...
  std::string target;  ///< the part that it refers to, without a leading slash
};

/// Relationships of one part to others of the same file.
class Relationships {
public:
  /// Reads the relationships of a part or, for the empty name, of the package. Throws PartError if
  /// they are damaged.
  Relationships(Archive& archive, std::string_view part, Limits const& limits);

  /// The relationship with that identifier, or null.
  [[nodiscard]] Relationship const* find(std::string_view id) const noexcept;
  /// The first relationship of that kind, or null.
  [[nodiscard]] Relationship const* findKind(std::string_view kind) const noexcept;

private:
  std::vector<Relationship> _relationships;
};

/// Resolves a relationship's target, which is relative to the part that has the relationship.
[[nodiscard]] std::string resolveTarget(std::string_view part, std::string_view target);

}  // namespace Zorv::Workbook
