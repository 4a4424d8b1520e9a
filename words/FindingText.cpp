#include "words/FindingText.h"

#include <algorithm>
#include <vector>

#include <fmt/format.h>

#include "words/Amounts.h"
#include "words/Printable.h"

namespace Zorv::Words {

namespace {

using Analysis::CheckFinding;
using Analysis::CheckKind;
using Analysis::Severity;

constexpr std::size_t widestFinding = 400;

/// The rules besides the one in question.
std::string describeOthers(CheckFinding const& finding) {
  std::vector<std::size_t> others(finding.rules.begin() + 1, finding.rules.end());
  if (others.empty()) {
    return {};
  }
  std::ranges::sort(others);
  return fmt::format(" ({} {})", others.size() == 1 ? "rule" : "rules", listNumbers(others));
}

}  // namespace

std::string_view toText(Severity severity) noexcept {
  switch (severity) {
    case Severity::Error:
      return "error";
    case Severity::Warning:
      return "warning";
    case Severity::Note:
      break;
  }
  return "note";
}

std::string describeFinding(CheckFinding const& finding) {
  CheckKind const& kind = Analysis::kindOf(finding.code);
  std::string const reason = shorten(finding.reason, widestFinding);
  return finding.rules.empty() ? fmt::format("{}: {}", kind.claim, reason)
                               : fmt::format("rule {} {}{}: {}", finding.rules.front(), kind.claim,
                                             describeOthers(finding), reason);
}

}  // namespace Zorv::Words
