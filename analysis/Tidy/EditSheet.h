#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/Shared/RangeSets.h"
#include "analysis/Tidy/SheetMarkup.h"

namespace Zorv::Analysis {

/// Edit of one rule element.
struct RuleEdit {
  bool isDropped = false;
  std::optional<RangeSet> ranges = std::nullopt;  ///< nothing: as they are
  /// New texts of the formulas, in their order; empty: as they are.
  std::vector<std::string> formulas = {};
};

/// Edits by the index of the rule element in the sheet.
using RuleEdits = std::map<std::size_t, RuleEdit>;

/// The bytes of a sheet's part with some rules changed or dropped, and every other byte as it is.
///
/// Rules that shared their ranges and do so no more get an element of their own, in the same order.
/// An element that loses its last rule goes. Requires that each edited element is plain.
[[nodiscard]] std::string editSheet(std::string_view bytes,
                                    std::vector<FormatMarkup> const& formats,
                                    RuleEdits const& edits);

}  // namespace Zorv::Analysis
