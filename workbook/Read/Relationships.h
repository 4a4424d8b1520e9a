#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "workbook/Limits.h"
#include "workbook/Package/Archive.h"

namespace Zorv::Workbook {

/// A pointer from one part to another (ISO/IEC 29500-2, 9.3).
struct Relationship {
  std::string id;
  std::string kind;    ///< the last word of its type: "worksheet", "styles", ...
  std::string target;  ///< the part that it points to, without a leading slash
};

/// The relationships of one part to others of the same file.
class Relationships {
public:
  /// Reads those of a part, or, for the empty name, those of the whole package. A part without any
  /// has none. Throws PartError where they are damaged.
  Relationships(Archive& archive, std::string_view part, Limits const& limits);

  /// The relationship of that identity, or null.
  [[nodiscard]] Relationship const* find(std::string_view id) const noexcept;
  /// The first relationship of that kind, or null.
  [[nodiscard]] Relationship const* findKind(std::string_view kind) const noexcept;

private:
  std::vector<Relationship> _relationships;
};

/// The part that a relationship's target means, seen from the part that has the relationship.
[[nodiscard]] std::string resolveTarget(std::string_view part, std::string_view target);

}  // namespace Zorv::Workbook
