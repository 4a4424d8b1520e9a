#include "records/FindingJson.h"

#include <algorithm>
#include <string>
#include <vector>

#include "DOM/A1Notation.h"
#include "words/FindingText.h"

namespace Zorv::Records {

namespace {

/// Ranges of one finding, at most: a hostile file may have millions.
constexpr std::size_t mostFindingRanges = 1'000;

std::string listFindingRanges(std::vector<TableRange> ranges) {
  ranges.resize(std::min(ranges.size(), mostFindingRanges));
  return DOM::A1Notation::toAddress(ranges);
}

}  // namespace

void addFinding(JsonBuilder& json, Workbook::Document const& document,
                Analysis::CheckFinding const& finding) {
  json.key("sheet");
  finding.sheet ? json.text(document.getSheets()[*finding.sheet].name) : json.null();
  auto const& kind = Analysis::kindOf(finding.code);
  json.key("code").text(kind.id).key("severity").text(Words::toText(finding.severity));
  json.key("ranges").text(listFindingRanges(finding.ranges));
  json.key("rules").beginArray();
  for (std::size_t const rule : finding.rules) {
    json.number(rule);
  }
  json.endArray();
  json.key("message").text(Words::describeFinding(finding)).key("advice").text(kind.advice);
}

}  // namespace Zorv::Records
