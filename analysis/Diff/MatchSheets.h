#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "workbook/Document.h"

namespace Zorv::Analysis {

/// Sheets of two documents by their names, as indices.
struct SheetMatch {
  std::vector<std::pair<std::size_t, std::size_t>> pairs;  ///< in the order of the first document
  std::vector<std::size_t> onlyInFirst;
  std::vector<std::size_t> onlyInSecond;
};

/// Finds for each of some sheets the one of the other document that has its name, ignoring letter
/// case.
[[nodiscard]] SheetMatch matchSheets(Workbook::Document const& first,
                                     std::span<std::size_t const> sheetsOfFirst,
                                     Workbook::Document const& second,
                                     std::span<std::size_t const> sheetsOfSecond);

}  // namespace Zorv::Analysis
