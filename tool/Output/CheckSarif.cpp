// SARIF 2.1.0 (OASIS), which tools for code review show.

#include <fmt/format.h>

#include "records/JsonBuilder.h"
#include "records/JsonText.h"
#include "tool/Output/CheckOutput.h"
#include "words/FindingText.h"

namespace Zorv::Tool {

namespace {

using Analysis::CheckFinding;
using Analysis::CheckKind;
using Records::JsonBuilder;

/// A file's name as a reference by RFC 3986: bytes that it does not allow are escaped, so that a
/// name of any bytes makes a valid one.
std::string toUri(std::string_view file) {
  constexpr std::string_view allowed =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
  std::string uri = file.starts_with('/') ? "file://" : "";
  for (char const character : file) {
    uri +=
        allowed.find(character) != std::string_view::npos
            ? std::string(1, character)
            : fmt::format("%{:02X}", static_cast<unsigned>(static_cast<unsigned char>(character)));
  }
  return uri;
}

void addMessage(JsonBuilder& json, std::string_view name, std::string_view text) {
  json.key(name).beginObject().key("text").text(text).endObject();
}

void addDriver(JsonBuilder& json) {
  json.key("tool").beginObject().key("driver").beginObject();
  json.key("name").text("cndfrmt").key("version").text(CNDFRMT_VERSION);
  json.key("rules").beginArray();
  for (CheckKind const& kind : Analysis::listCheckKinds()) {
    json.beginObject().key("id").text(kind.id);
    addMessage(json, "shortDescription", kind.claim);
    addMessage(json, "help", kind.advice);
    json.key("defaultConfiguration").beginObject();
    json.key("level").text(Words::toText(kind.severity)).endObject().endObject();
  }
  json.endArray().endObject().endObject();
}

/// A workbook has no lines; programs that need one show the finding at the beginning of the file.
void addLocation(JsonBuilder& json, Selection const& selection, CheckFinding const& finding) {
  json.key("locations").beginArray().beginObject();
  json.key("physicalLocation").beginObject();
  json.key("artifactLocation").beginObject();
  json.key("uri").text(toUri(selection.getFile())).endObject();
  json.key("region").beginObject().key("startLine").number(1).endObject().endObject();
  std::string const place = describePlace(selection, finding);
  if (!place.empty()) {
    json.key("logicalLocations").beginArray().beginObject();
    json.key("fullyQualifiedName").text(place).endObject().endArray();
  }
  json.endObject().endArray();
}

void addResult(JsonBuilder& json, Selection const& selection, CheckFinding const& finding) {
  CheckKind const& kind = Analysis::kindOf(finding.code);
  json.beginObject().key("ruleId").text(kind.id);
  json.key("ruleIndex").number(static_cast<std::size_t>(kind.code));
  json.key("level").text(Words::toText(finding.severity));
  std::string const place = describePlace(selection, finding);
  addMessage(json, "message",
             fmt::format("{}{}{}. {}", place, place.empty() ? "" : ": ",
                         Words::describeFinding(finding), kind.advice));
  addLocation(json, selection, finding);
  json.endObject();
}

}  // namespace

void printCheckSarif(Selection const& selection, Report const& report, CheckFindings findings,
                     OutputBuffer& out) {
  std::string run;
  JsonBuilder json(run);
  json.beginObject();
  addDriver(json);
  json.key("invocations").beginArray().beginObject();
  json.key("executionSuccessful").boolean(report.isComplete()).endObject().endArray();
  json.key("results").beginArray();
  for (CheckFinding const& finding : findings) {
    addResult(json, selection, finding);
  }
  json.endArray().endObject();
  out.text() += run + "\n";
  out.endEntry();
}

}  // namespace Zorv::Tool
