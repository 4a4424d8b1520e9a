#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "DOM/ConditionalFormat.h"
#include "Utils/TableRange.h"
#include "visuals/VisualFormat.h"

namespace Zorv::Workbook {

/// A conditional-formatting rule of a file (a `cfRule` element, ISO/IEC 29500-1, 18.3.1.10), and
/// the conditional format or the visual format made from it.
///
/// A data bar, a colour scale or an icon set may have a second element in the extension list, which
/// refines the first. Both are one rule, that of the first element.
struct Rule {
  /// Number of the rule in the workbook, from 0: sheets in the workbook's order, elements in the
  /// order of the sheet's part. Every element counts, so the numbers have a gap where an element of
  /// the extension list is part of an earlier rule.
  std::size_t number = 0;
  std::size_t sheet = 0;        ///< index of the sheet in the document
  std::string type;             ///< as written: "cellIs", "expression", ...
  std::string operatorText;     ///< as written; empty if there is none
  std::optional<int> priority;  ///< the smallest number comes first; nothing if none is written
  bool stopIfTrue = false;      ///< rules of lower priority are not evaluated where this one holds
  bool fromExtensionList = false;     ///< written as the later `x14:cfRule`
  std::string rangeText;              ///< the ranges as written; a long text is cut, see quote()
  std::vector<TableRange> ranges;     ///< empty if the ranges cannot be read
  std::vector<std::string> formulas;  ///< as written
  /// Formula of the text that a text rule looks for, such as `$C$14`; empty for a text that is
  /// written out, and for rules of other kinds.
  std::string needleFormula;

  /// The conditional format, owned by the sheet's table; null if the rule is not resolved, or is a
  /// visual one.
  DOM::ConditionalFormat const* format = nullptr;
  /// The visual format of a colour scale, a data bar or an icon set, owned by the sheet; null if
  /// the rule is not resolved, or is a condition.
  Visuals::VisualFormat const* visual = nullptr;
  /// Why the rule is not resolved; empty if it is.
  std::string unresolvedReason;
  /// Things that the rule's formulas refer to and the document lacks, in words such as `refers to
  /// the missing sheet "Old"`. The rule is resolved all the same, but hardly as it is meant.
  std::vector<std::string> doubts;
  /// Names of the functions that the formulas call and neither the engine nor the document has.
  std::set<std::string> unknownFunctions;

  /// True if a format was made from the rule.
  [[nodiscard]] bool isResolved() const noexcept { return format != nullptr || visual != nullptr; }
};

}  // namespace Zorv::Workbook
