#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "DOM/ConditionalFormat.h"
#include "Utils/TableRange.h"

namespace Zorv::Workbook {

/// One conditional-formatting rule as a file states it (a `cfRule` element, ISO/IEC 29500-1,
/// 18.3.1.10), and the conditional format that it became.
struct Rule {
  /// Counts every rule of the workbook from 0: sheets in the workbook's order, rules in the order
  /// of the sheet's part, those of the extension list and those of visual kinds included.
  std::size_t number = 0;
  std::size_t sheet = 0;        ///< index of the sheet in the document
  std::string type;             ///< as written: "cellIs", "expression", ...
  std::string operatorText;     ///< as written; empty where the rule has none
  std::optional<int> priority;  ///< the smallest number comes first; nothing where none is written
  bool stopIfTrue = false;
  bool fromExtensionList = false;  ///< written as the later `x14:cfRule`
  std::string rangeText;           ///< the areas as written
  std::vector<TableRange> ranges;  ///< empty where `rangeText` could not be read
  std::vector<std::string> formulas;

  /// The conditional format, owned by the sheet's table; null where the rule is not resolved.
  DOM::ConditionalFormat const* format = nullptr;
  /// Why the rule is not resolved; empty where it is.
  std::string unresolvedReason;
};

}  // namespace Zorv::Workbook
