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
    case Uncalculated::Lost:
      return "no result and a formula that {}";
  }
  return "";
}

/// The same for cells that keep the result of the file.
std::string_view keepingPhraseOf(Uncalculated reason) noexcept {
  switch (reason) {
    case Uncalculated::NoText:
      return "the file does not say what the formula is";
    case Uncalculated::Unreadable:
      return "the formula cannot be read: {}";
    case Uncalculated::TooMuch:
      return "the formulas would take too long";
    case Uncalculated::Failed:
      return "the formula cannot be calculated: {}";
    case Uncalculated::Circular:
      return "the formula needs its own result";
    case Uncalculated::UnknownFunctions:
      return "the formula has functions that are not known: {}";
    case Uncalculated::Lost:
      return "the formula {}";
  }
  return "";
}

/// True if the details are names to be listed, and not the message of one failure.
constexpr bool listsDetails(Uncalculated reason) noexcept {
  return reason == Uncalculated::UnknownFunctions || reason == Uncalculated::Lost;
}

}  // namespace

void UncalculatedReport::add(Key const& key, CellIndex cell,
                             std::vector<std::string> const& details) {
  Entry& entry = _entries[key];
  ++entry.count;
  bool const isFirst = entry.count == 1 || cell < entry.first;
  if (isFirst) {
    entry.first = cell;
  }
  if (listsDetails(key.reason)) {
    entry.details.insert(details.begin(), details.end());
  } else if (isFirst) {
    entry.details = {details.begin(), details.end()};
  }
}

void UncalculatedReport::writeTo(Document& document) const {
  for (auto const& [key, entry] : _entries) {
    Sheet const& sheet = document.getSheets()[key.sheet];
    document.addFinding(
        {sheet.part, sheet.name, DOM::A1Notation::toAddress(entry.first), describe(key, entry)});
  }
}

std::string UncalculatedReport::describe(Key const& key, Entry const& entry) {
  bool const isOne = entry.count == 1;
  auto const details = fmt::format("{}", fmt::join(entry.details, ", "));
  auto const cells =
      isOne ? std::string("the cell") : fmt::format("{} cells, this one first,", entry.count);
  if (key.keepsResult) {
    return fmt::format("{} {} on the current date or time, but {} the result of the file: ", cells,
                       isOne ? "depends" : "depend", isOne ? "keeps" : "keep") +
           fmt::format(fmt::runtime(keepingPhraseOf(key.reason)), details);
  }
  return fmt::format("{} {} ", cells, isOne ? "has" : "have") +
         fmt::format(fmt::runtime(phraseOf(key.reason)), details);
}

}  // namespace Zorv::Workbook
