#include "workbook/Document.h"

#include "workbook/CaseFolding.h"

namespace Zorv::Workbook {

std::optional<std::size_t> Document::findSheet(std::string const& name) const {
  std::string const folded = foldCase(name);
  for (std::size_t sheet = 0; sheet < _sheets.size(); ++sheet) {
    if (foldCase(_sheets[sheet].name) == folded) {
      return sheet;
    }
  }
  return std::nullopt;
}

}  // namespace Zorv::Workbook
