#pragma once

#include <set>
#include <string>
#include <vector>

#include "workbook/Rule.h"

namespace Zorv::Tool {

/// Names of the functions in the rules' formulas that the formula engine does not have; they
/// evaluate to `#NAME?`.
[[nodiscard]] std::set<std::string> findUnknownFunctions(
    std::vector<Workbook::Rule const*> const& rules);

}  // namespace Zorv::Tool
