#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "workbook/Rule.h"

namespace Zorv::Tool {

/// Numbers of rules by what became of them.
struct RuleCounts {
  struct OfKind {
    std::size_t count = 0;
    std::string reason;      ///< that of the first
    bool hasOthers = false;  ///< another rule has another reason
  };

  explicit RuleCounts(std::vector<Workbook::Rule const*> const& rules);

  std::size_t read = 0;
  std::size_t resolved = 0;
  std::size_t doubtful = 0;                         ///< resolved, but with doubts
  std::map<std::string, OfKind> notResolvedByKind;  ///< by Words::describeType()
  /// Functions in the formulas that the formula engine does not have: they evaluate to `#NAME?`.
  std::set<std::string> unknownFunctions;
};

}  // namespace Zorv::Tool
