#include "Formulas/Evaluation/SheetRange.h"

#include <algorithm>
#include <cstddef>

namespace Zorv::Formulas {

std::vector<TableContext const*> findSheetRange(ContextProvider const& provider,
                                                std::string_view text) {
  std::size_t const colon = text.find(':');
  if (colon == std::string_view::npos) {
    return {};
  }
  TableContext const* const one = provider.findTableContext(text.substr(0, colon));
  TableContext const* const other = provider.findTableContext(text.substr(colon + 1));
  if (one == nullptr || other == nullptr) {
    return {};
  }
  auto const [first, last] =
      std::minmax({one->getDocTableIndex().get(), other->getDocTableIndex().get()});
  if (last >= provider.getTableCount()) {
    // The tables of other workbooks come after those of the document.
    return {};
  }
  std::vector<TableContext const*> tables;
  for (std::size_t index = first; index <= last; ++index) {
    if (auto const* table = provider.findTableContextAt(FormulaModel::DocTableIndex(index))) {
      tables.push_back(table);
    }
  }
  return tables;
}

}  // namespace Zorv::Formulas
