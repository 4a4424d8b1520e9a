#include "workbook/Document.h"

#include <algorithm>

#include "Utils/CaseFolding.h"
#include "workbook/Quote.h"

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

Rule const* Document::findRule(std::size_t number) const noexcept {
  auto const found = std::ranges::lower_bound(_rules, number, {}, &Rule::number);
  return found != _rules.end() && found->number == number ? &*found : nullptr;
}

std::span<Rule const> Document::getRulesOfSheet(std::size_t sheet) const noexcept {
  auto const first = std::ranges::lower_bound(_rules, sheet, {}, &Rule::sheet);
  auto const last = std::ranges::upper_bound(first, _rules.end(), sheet, {}, &Rule::sheet);
  return {first, last};
}

void Document::addFinding(Finding finding) {
  constexpr std::size_t findingLimit = 1'000;
  constexpr std::size_t longestMessage = 1'000;
  finding.part = quote(finding.part);
  finding.sheet = quote(finding.sheet);
  finding.range = quote(finding.range);
  finding.message = quote(finding.message, longestMessage);
  if (_findings.size() < findingLimit) {
    _findings.push_back(std::move(finding));
  } else if (_findings.size() == findingLimit) {
    _findings.push_back({{}, {}, {}, "further findings are left out"});
  }
}

}  // namespace Zorv::Workbook
