#include "workbook/Document.h"

#include "Utils/CaseFolding.h"

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

void Document::addFinding(Finding finding) {
  constexpr std::size_t findingLimit = 1'000;
  if (_findings.size() < findingLimit) {
    _findings.push_back(std::move(finding));
  } else if (_findings.size() == findingLimit) {
    _findings.push_back({{}, {}, {}, "further findings are left out"});
  }
}

}  // namespace Zorv::Workbook
