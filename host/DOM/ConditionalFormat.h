#pragma once

#include <utility>
#include <vector>

#include "DOM/ConditionalFormatOperator.h"
#include "DOM/TableRangeByID.h"
#include "Utils/UUID.h"

namespace Zorv::DOM {

/// Conditional format of a table: its ranges, its condition, the named style that it contributes
/// where the condition holds, and whether it then stops the evaluation of lower priorities.
class ConditionalFormat {
public:
  /// A format for ranges by ID. An empty UUID is a style that sets nothing.
  ConditionalFormat(std::vector<TableRangeByID> ranges, ConditionalFormatOperator condition,
                    UUID styleUUID, bool stopCalculateConditions = false) noexcept
      : _ranges(std::move(ranges)),
        _operator(std::move(condition)),
        _styleUUID(styleUUID),
        _stopCalculateConditions(stopCalculateConditions) {}

  /// Where the format applies.
  [[nodiscard]] std::vector<TableRangeByID> const& getRanges() const noexcept { return _ranges; }
  /// Valid for the life of the format; operators keep references into it.
  [[nodiscard]] ConditionalFormatOperator const& getOperator() const noexcept { return _operator; }
  /// The named style in the document's Styles; it may be missing there.
  [[nodiscard]] UUID const& getStyleUUID() const noexcept { return _styleUUID; }
  /// True if formats of lower priority are not evaluated where this one holds.
  [[nodiscard]] bool getStopCalculateConditions() const noexcept {
    return _stopCalculateConditions;
  }

private:
  std::vector<TableRangeByID> _ranges;
  ConditionalFormatOperator _operator;
  UUID _styleUUID;
  bool _stopCalculateConditions;
};

}  // namespace Zorv::DOM
