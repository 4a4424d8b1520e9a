#include <algorithm>

#include "DOM/A1Notation.h"
#include "tool/Output/CheckOutput.h"
#include "tool/Output/JsonBuilder.h"
#include "tool/Output/JsonText.h"

namespace Zorv::Tool {

namespace {

using Analysis::CheckFinding;
using Analysis::Severity;

/// Ranges of one finding, at most: a hostile file may have millions.
constexpr std::size_t mostRanges = 1'000;

std::string listRanges(std::vector<TableRange> ranges) {
  ranges.resize(std::min(ranges.size(), mostRanges));
  return DOM::A1Notation::toAddress(ranges);
}

/// Adds the members of a finding to an object that has been begun.
void addMembers(JsonBuilder& json, CheckFinding const& finding) {
  auto const& kind = Analysis::kindOf(finding.code);
  json.key("code").text(kind.id).key("severity").text(toText(finding.severity));
  json.key("ranges").text(listRanges(finding.ranges));
  json.key("rules").beginArray();
  for (std::size_t const rule : finding.rules) {
    json.number(rule);
  }
  json.endArray();
  json.key("message").text(describeFinding(finding)).key("advice").text(kind.advice);
}

}  // namespace

void printCheckJson(Selection const& selection, Report const& report, CheckFindings findings,
                    OutputBuffer& out) {
  out.text() += beginJsonDocument(selection) + ",\"findings\":[";
  for (std::size_t i = 0; i < findings.size(); ++i) {
    std::string object;
    JsonBuilder json(object);
    json.beginObject().key("sheet");
    if (auto const sheet = findings[i].sheet) {
      json.text(selection.getDocument().getSheets()[*sheet].name);
    } else {
      json.null();
    }
    addMembers(json, findings[i]);
    json.endObject();
    out.text() += (i == 0 ? "\n" : ",\n") + object;
  }
  std::string summary;
  JsonBuilder json(summary);
  json.beginObject().key("errors").number(countFindings(findings, Severity::Error));
  json.key("warnings").number(countFindings(findings, Severity::Warning));
  json.key("notes").number(countFindings(findings, Severity::Note));
  json.key("complete").boolean(report.isComplete()).endObject();
  out.text() += "\n],\"summary\":" + summary + "}\n";
  out.endEntry();
}

void printCheckJsonLines(Selection const& selection, CheckFindings findings, OutputBuffer& out) {
  for (CheckFinding const& finding : findings) {
    std::string members;
    JsonBuilder json(members);
    json.beginObject().key("file").text(selection.getFile()).key("sheet");
    if (finding.sheet) {
      json.text(selection.getDocument().getSheets()[*finding.sheet].name);
    } else {
      json.null();
    }
    addMembers(json, finding);
    json.endObject();
    out.text() += members + "\n";
    out.endEntry();
  }
}

}  // namespace Zorv::Tool
