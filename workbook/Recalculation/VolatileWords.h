#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "workbook/Document.h"

namespace Zorv::Workbook {

/// Volatile functions that a formula calls, itself or through the defined names that it uses.
struct VolatileUse {
  bool clock = false;   ///< TODAY or NOW
  bool random = false;  ///< RAND, RANDBETWEEN or RANDARRAY
  bool place = false;   ///< OFFSET or INDIRECT, whose references are made at run time

  friend bool operator==(VolatileUse const&, VolatileUse const&) noexcept = default;
};

/// Finds volatile functions in the texts of formulas, without parsing them.
///
/// A name counts wherever the formula writes it, whatever sheet it belongs to: a formula may be
/// taken for volatile that is not, never the other way round. Threads: const members may run
/// concurrently.
class VolatileWords {
public:
  VolatileWords() = default;
  /// Costs the size of the names' formulas.
  explicit VolatileWords(std::vector<DefinedName> const& names);

  /// Costs the size of the text.
  [[nodiscard]] VolatileUse findIn(std::string_view formula) const;

private:
  std::unordered_map<std::string, VolatileUse> _names;  ///< the volatile ones, case-folded
};

}  // namespace Zorv::Workbook
