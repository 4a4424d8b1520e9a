#include "workbook/Recalculation/UncalculatedReport.h"

#include <string_view>

#include <fmt/format.h>

#include "DOM/A1Notation.h"

namespace Zorv::Workbook {

namespace {

/// The finding's text after the number of cells; `{}` is replaced by the details.
std::string_view phraseOf(Uncalculated reason) noexcept {
  switch (reason) {
    case Uncalculated::NoText:
      return "neither a formula nor a result; read as empty";
    case Uncalculated::Unreadable:
      return "no result and a formula that cannot be read; read as empty: {}";
    case Uncalculated::TooMuch:
      return "no result and formulas that would take too long; read as empty";
    case Uncalculated::Failed:
      return "no result and a formula that cannot be calculated; read as empty: {}";
    case Uncalculated::Circular:
      return "no result and a formula that needs its own result, which counted as empty";
    case Uncalculated::UnknownFunctions:
      return "no result and a formula with functions that are not known: {}";
  }
  return "";
}

/// Whether the details are names to be listed, and not the message of one failure.
constexpr bool listsDetails(Uncalculated reason) noexcept {
  return reason == Uncalculated::UnknownFunctions;
}

}  // namespace

void UncalculatedReport::add(std::size_t sheet, Uncalculated reason, CellIndex cell,
                             std::vector<std::string> const& details) {
  Entry& entry = _entries[{sheet, reason}];
  ++entry.count;
  bool const isFirst = entry.count == 1 || cell < entry.first;
  if (isFirst) {
    entry.first = cell;
  }
  if (listsDetails(reason)) {
    entry.details.insert(details.begin(), details.end());
  } else if (isFirst) {
    entry.details = {details.begin(), details.end()};
  }
}

void UncalculatedReport::writeTo(Document& document) const {
  for (auto const& [key, entry] : _entries) {
    auto const& [sheetIndex, reason] = key;
    Sheet const& sheet = document.getSheets()[sheetIndex];
    auto const details = fmt::format("{}", fmt::join(entry.details, ", "));
    auto const cells = entry.count == 1
                           ? std::string("the cell has ")
                           : fmt::format("{} cells, this one first, have ", entry.count);
    document.addFinding({sheet.part, sheet.name, DOM::A1Notation::toAddress(entry.first),
                         cells + fmt::format(fmt::runtime(phraseOf(reason)), details)});
  }
}

}  // namespace Zorv::Workbook
