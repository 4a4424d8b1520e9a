#include "analysis/Diff/MatchSheets.h"

namespace Zorv::Analysis {

SheetMatch matchSheets(Workbook::Document const& first, std::span<std::size_t const> sheetsOfFirst,
                       Workbook::Document const& second,
                       std::span<std::size_t const> sheetsOfSecond) {
  SheetMatch match;
  for (std::size_t const sheet : sheetsOfFirst) {
    if (auto const partner = second.findSheet(first.getSheets()[sheet].name)) {
      match.pairs.emplace_back(sheet, *partner);
    } else {
      match.onlyInFirst.push_back(sheet);
    }
  }
  for (std::size_t const sheet : sheetsOfSecond) {
    if (!first.findSheet(second.getSheets()[sheet].name)) {
      match.onlyInSecond.push_back(sheet);
    }
  }
  return match;
}

}  // namespace Zorv::Analysis
