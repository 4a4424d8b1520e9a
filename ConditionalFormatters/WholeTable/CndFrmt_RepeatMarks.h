#pragma once

#include <cstdint>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/WholeTable/CndFrmt_CellSet.h"
#include "Utils/CellIndex.h"

namespace Zorv::ConditionalFormatters {

/// The cells that repeat a value, and which of them began to, or ended, in an edit.
class RepeatMarks {
public:
  [[nodiscard]] bool contains(CellIndex cell) const noexcept {
    return _repeated.contains(cell.getRow().get(), cell.getColumn().get());
  }

  /// Marks a cell, or takes its mark away. While `isEditing`, what the cell had is noted.
  void set(PositionKey cell, bool isRepeated, bool isEditing);

  /// The cells whose mark is not the one that they had when they were noted first. Forgets all
  /// notes.
  [[nodiscard]] std::vector<CellIndex> takeFlipped();

private:
  struct Before {
    PositionKey cell;
    bool wasRepeated;
  };

  CellSet _repeated;
  std::vector<Before> _notes;  ///< in the order of the edit
};

}  // namespace Zorv::ConditionalFormatters
