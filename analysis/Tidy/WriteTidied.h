#pragma once

#include <cstdint>
#include <filesystem>

#include "analysis/Tidy/PlanTidy.h"

namespace Zorv::Analysis {

struct WriteOptions {
  std::filesystem::path target;
  bool mayReplace = false;   ///< the target may be an existing file other than the source
  unsigned threadCount = 1;  ///< that compare cells
};

/// Writes the file that a plan describes, if every cell proves to look as before. Returns the
/// number of positions that were compared; a plan that changes nothing gives a plain copy.
///
/// The new file is written beside the target and loaded; its rules are counted, and every cell in
/// their ranges is compared with the document's, see compareSheets(), at the moment of the clock in
/// force. Only then it takes the target's place. Throws TidyError if anything differs, or cannot be
/// read, TargetError if it cannot be written, and what the budget throws; the target is then as it
/// was.
/// `document` must have been loaded from `file` with `load`.
std::uint64_t writeTidied(std::filesystem::path const& file, Workbook::Document const& document,
                          TidyPlan const& plan, Workbook::LoadOptions const& load,
                          WriteOptions const& options);

}  // namespace Zorv::Analysis
