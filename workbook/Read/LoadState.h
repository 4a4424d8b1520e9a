#pragma once

#include <cstddef>
#include <cstdint>

#include "workbook/Document.h"
#include "workbook/Limits.h"
#include "workbook/Package/Archive.h"
#include "workbook/Recalculation/FormulasWithoutResults.h"

namespace Zorv::Workbook {

/// State that the readers of one file's parts share.
struct LoadState {
  Archive& archive;
  Limits limits;
  Document& document;
  std::uint64_t cellCount = 0;
  std::size_t ruleCount = 0;  ///< the number of the next rule
  std::uint64_t ruleAreaCount = 0;
  FormulasWithoutResults missing{};
};

}  // namespace Zorv::Workbook
