#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "analysis/Tidy/PlanTidy.h"
#include "workbook/Document.h"

namespace Zorv::TestSupport {

/// The unpacked parts of a workbook file, by name.
[[nodiscard]] std::map<std::string, std::string> readParts(std::filesystem::path const& file);

/// A workbook file before and after it was tidied.
struct TidiedFile {
  Workbook::Document before;
  Workbook::Document after;
  Analysis::TidyPlan plan;
  std::map<std::string, std::string> partsBefore;
  std::map<std::string, std::string> partsAfter;
};

/// Tidies a file into another one beside it. Throws what that throws.
[[nodiscard]] TidiedFile tidyFile(std::filesystem::path const& file);
[[nodiscard]] TidiedFile tidyBytes(std::string const& bytes);

/// The plan in short: `3+4+7 A1:B9, dead 5 by 3`.
[[nodiscard]] std::string describe(Analysis::TidyPlan const& plan);

}  // namespace Zorv::TestSupport
