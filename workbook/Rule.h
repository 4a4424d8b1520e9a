#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "DOM/ConditionalFormat.h"
#include "Utils/TableRange.h"

namespace Zorv::Workbook {

/// A conditional-formatting rule of a file (a `cfRule` element, ISO/IEC 29500-1, 18.3.1.10), and
/// the conditional format made from it.
struct Rule {
  /// Number of the rule in the workbook, from 0: sheets in the workbook's order, rules in the order
  /// of the sheet's part. Rules of the extension list and of visual kinds count, too.
  std::size_t number = 0;
  std::size_t sheet = 0;        ///< index of the sheet in the document
  std::string type;             ///< as written: "cellIs", "expression", ...
  std::string operatorText;     ///< as written; empty if there is none
  std::optional<int> priority;  ///< the smallest number comes first; nothing if none is written
  bool stopIfTrue = false;
  bool fromExtensionList = false;  ///< written as the later `x14:cfRule`
  std::string rangeText;           ///< the ranges as written
  std::vector<TableRange> ranges;  ///< empty if `rangeText` cannot be read
  std::vector<std::string> formulas;

  /// The conditional format, owned by the sheet's table; null if the rule is not resolved.
  DOM::ConditionalFormat const* format = nullptr;
  /// Why the rule is not resolved; empty if it is.
  std::string unresolvedReason;
};

}  // namespace Zorv::Workbook
