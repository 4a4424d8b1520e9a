#include "workbook/Read/LoadState.h"

#include <utility>

namespace Zorv::Workbook {

void LoadState::report(Finding finding) {
  constexpr std::size_t findingLimit = 1'000;
  auto& findings = document.getFindings();
  if (findings.size() < findingLimit) {
    findings.push_back(std::move(finding));
  } else if (findings.size() == findingLimit) {
    findings.push_back({{}, {}, {}, "further findings are left out"});
  }
}

}  // namespace Zorv::Workbook
