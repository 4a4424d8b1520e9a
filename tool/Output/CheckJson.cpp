#include <string>

#include "records/FindingJson.h"
#include "records/JsonBuilder.h"
#include "tool/Output/CheckOutput.h"
#include "tool/Output/JsonDocument.h"

namespace Zorv::Tool {

using Analysis::CheckFinding;
using Analysis::Severity;
using Records::JsonBuilder;

void printCheckJson(Selection const& selection, Report const& report, CheckFindings findings,
                    OutputBuffer& out) {
  out.text() += beginJsonDocument(selection) + ",\"findings\":[";
  for (std::size_t i = 0; i < findings.size(); ++i) {
    std::string object;
    JsonBuilder json(object);
    json.beginObject();
    Records::addFinding(json, selection.getDocument(), findings[i]);
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
    json.beginObject().key("file").text(selection.getFile());
    Records::addFinding(json, selection.getDocument(), finding);
    json.endObject();
    out.text() += members + "\n";
    out.endEntry();
  }
}

}  // namespace Zorv::Tool
