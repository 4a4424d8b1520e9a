#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "DOM/StyleProps.h"

namespace Zorv::Workbook {

/// Part of a text, with character properties of its own over those of the cell.
struct TextRun {
  std::size_t begin = 0;  ///< its first byte; it ends where the next run begins
  DOM::RunProps props;    ///< nothing set: those of the cell
};

/// Runs of a text (ISO/IEC 29500-1, 18.4.4), ascending; the first begins at byte 0. Some run sets a
/// property.
using RichText = std::vector<TextRun>;

/// Cell whose text has runs. Cells of one shared text share its runs.
struct RichCell {
  unsigned long row = 0;                 ///< of the cell, from 0
  unsigned long column = 0;              ///< of the cell, from 0
  std::shared_ptr<RichText const> text;  ///< never null
};

}  // namespace Zorv::Workbook
