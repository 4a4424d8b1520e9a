#include <algorithm>
#include <set>
#include <vector>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/CheckOutput.h"
#include "tool/Output/ExplainLines.h"
#include "words/FindingText.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

using Analysis::CheckFinding;
using Analysis::CheckKind;
using Analysis::Severity;

constexpr std::size_t widestSheetName = 60;

std::string describeFirstRanges(std::vector<TableRange> const& ranges) {
  constexpr std::size_t most = 3;
  std::vector<TableRange> const first(
      ranges.begin(), ranges.begin() + static_cast<std::ptrdiff_t>(std::min(ranges.size(), most)));
  return DOM::A1Notation::toAddress(first) +
         (ranges.size() > most ? fmt::format(" and {} more", ranges.size() - most) : "");
}

/// On a terminal, a line that is too long goes on in further ones; elsewhere it stays whole, for
/// programs that look for it.
void addLine(std::string const& line, Terminal const& terminal, OutputBuffer& out) {
  if (terminal.width) {
    ExplainLines(terminal, out).add(0, line);
  } else {
    out.text() += line + '\n';
  }
  out.endEntry();
}

}  // namespace

std::size_t countFindings(CheckFindings findings, Severity severity) {
  return static_cast<std::size_t>(std::ranges::count(findings, severity, &CheckFinding::severity));
}

std::string describePlace(Selection const& selection, CheckFinding const& finding) {
  if (!finding.sheet) {
    return {};
  }
  auto const& sheet = selection.getDocument().getSheets()[*finding.sheet];
  std::string const name = Words::shorten(sheet.name, widestSheetName);
  return finding.ranges.empty() ? name
                                : fmt::format("{}!{}", name, describeFirstRanges(finding.ranges));
}

void printCheckText(Selection const& selection, CheckFindings findings, Terminal const& terminal,
                    OutputBuffer& out) {
  std::set<Analysis::CheckCode> codes;
  for (CheckFinding const& finding : findings) {
    std::string const place = describePlace(selection, finding);
    addLine(fmt::format("{}: {}{}{} [{}]", Words::toText(finding.severity), place,
                        place.empty() ? "" : ": ", Words::describeFinding(finding),
                        Analysis::kindOf(finding.code).id),
            terminal, out);
    codes.insert(finding.code);
  }
  out.text() += codes.empty() ? "" : "\n";
  for (auto const code : codes) {
    CheckKind const& kind = Analysis::kindOf(code);
    addLine(fmt::format("{}: {}", kind.id, kind.advice), terminal, out);
  }
}

}  // namespace Zorv::Tool
