#include "tool/Output/Report.h"

#include <algorithm>
#include <ostream>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/RuleCounts.h"
#include "tool/Text/ConditionText.h"
#include "tool/Text/TextTable.h"

namespace Zorv::Tool {

namespace {

constexpr std::uint64_t failuresShown = 10;

/// `1 data bar`, `2 data bars`.
std::string countOf(std::uint64_t count, std::string_view what) {
  return fmt::format("{} {}{}", count, what, count == 1 ? "" : "s");
}

std::string listKinds(std::map<std::string, std::size_t> const& kinds) {
  std::string text;
  for (auto const& [kind, count] : kinds) {
    text += fmt::format("{}{}", text.empty() ? " (" : ", ", countOf(count, kind));
  }
  return text.empty() ? text : text + ")";
}

std::string describe(std::exception_ptr const& problem) {
  try {
    std::rethrow_exception(problem);
  } catch (std::exception const& error) {
    return error.what();
  } catch (...) {
    return "unknown error";
  }
}

/// Place of a finding in the file, as a prefix of its message.
std::string placeOf(Workbook::Finding const& finding) {
  std::string place;
  for (auto const* part : {&finding.part, &finding.sheet, &finding.range}) {
    place += part->empty() ? "" : *part + ": ";
  }
  return place;
}

}  // namespace

void Report::sayFindings() const {
  auto const& document = _selection.getDocument();
  auto const& file = _selection.getOptions().file;
  for (auto const& finding : document.getFindings()) {
    _err << toPrintable(fmt::format("{}: {}{}", file, Tool::placeOf(finding), finding.message))
         << '\n';
  }
  for (auto const* rule : _selection.getRules()) {
    if (!rule->format) {
      _err << toPrintable(fmt::format("{}: not resolved: {}: {}", placeOf(*rule),
                                      describeType(rule->type), rule->unresolvedReason))
           << '\n';
    }
  }
}

void Report::sayFailure(Workbook::Rule const& rule, CellIndex cell,
                        std::exception_ptr const& problem) {
  if (++_failureCount <= failuresShown) {
    _err << toPrintable(fmt::format("{}: cannot be evaluated for {}: {}", placeOf(rule),
                                    DOM::A1Notation::toAddress(cell), describe(problem)))
         << '\n';
  }
}

void Report::saySparse(std::size_t sheet, std::uint64_t positions) const {
  _err << toPrintable(fmt::format(
              "{}: {}: the rules cover {} positions; only those that hold a cell are looked at "
              "(--range names fewer)",
              _selection.getOptions().file, _selection.getDocument().getSheets()[sheet].name,
              positions))
       << '\n';
}

void Report::saySummary() const {
  auto const& file = _selection.getOptions().file;
  if (_failureCount > 0) {
    _err << fmt::format("{}: {} could not be evaluated\n", file,
                        countOf(_failureCount, "condition"));
  }
  RuleCounts const counts(_selection.getRules());
  auto line = fmt::format("{}: {} read, {} resolved, {} not resolved{}", file,
                          countOf(counts.read, "rule"), counts.resolved,
                          counts.read - counts.resolved, listKinds(counts.notResolvedByKind));
  if (!counts.unknownFunctions.empty()) {
    line += fmt::format("; functions not known: {}", fmt::join(counts.unknownFunctions, ", "));
  }
  _err << toPrintable(line) << '\n';
}

std::string Report::placeOf(Workbook::Rule const& rule) const {
  return fmt::format("{}: {}!{}: rule {}", _selection.getOptions().file,
                     _selection.getDocument().getSheets()[rule.sheet].name, describeRanges(rule),
                     rule.number);
}

}  // namespace Zorv::Tool
