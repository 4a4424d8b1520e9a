#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "Utils/TableRange.h"

namespace Zorv::Tool {

/// Cells that an argument names: of one sheet, or of whichever sheets are selected.
struct SheetRange {
  std::optional<std::string> sheet;
  TableRange range;
};

/// Parses `B7`, `A1:C9`, `A:C`, `3:5`, each with or without a sheet in front: `Sheet1!B7`,
/// `'Sheet 1'!B7`, `Sheet 1!B7`. In apostrophes, two stand for one. Nothing if the text is neither.
[[nodiscard]] std::optional<SheetRange> parseSheetRange(std::string_view text);

}  // namespace Zorv::Tool
