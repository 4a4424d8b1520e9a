#pragma once

#include <filesystem>

#include "workbook/Document.h"
#include "workbook/Limits.h"
#include "workbook/LoadError.h"

namespace Zorv::Workbook {

struct LoadOptions {
  Limits limits;
};

/// Reads an .xlsx or .xlsm workbook (ISO/IEC 29500, transitional or strict).
///
/// The file is only read, and closed before the operation returns. A rule that cannot be resolved
/// is kept with its reason, and the others go on; see Rule. Throws LoadError where the file is
/// damaged, encrypted, no workbook, or beyond the limits.
/// Cost: linear in the unpacked size; sheets are streamed, so memory follows the cells.
[[nodiscard]] Document loadWorkbook(std::filesystem::path const& file,
                                    LoadOptions const& options = {});

}  // namespace Zorv::Workbook
