#include "tool/Output/JsonDocument.h"

#include <chrono>

#include "DOM/A1Notation.h"
#include "records/JsonBuilder.h"
#include "records/JsonText.h"
#include "tool/Output/RuleCounts.h"
#include "words/ConditionText.h"
#include "words/Moment.h"

namespace Zorv::Tool {

namespace {

using Records::JsonBuilder;

/// Of the shape of the documents. It changes where a member changes its meaning or goes.
constexpr int jsonVersion = 1;

void addProblem(Problem const& problem, Workbook::Document const& document, JsonBuilder& json) {
  auto const& rule = *problem.rule;
  json.beginObject().key("rule").number(rule.number);
  json.key("sheet").text(document.getSheets()[rule.sheet].name);
  json.key("ranges").text(Words::describeRanges(rule));
  json.key("problem").text(toText(problem.kind)).key("reason").text(problem.reason);
  if (problem.kind == ProblemKind::Failed) {
    json.key("cells").number(problem.cellCount);
    json.key("firstCell").text(DOM::A1Notation::toAddress(problem.firstCell));
  }
  json.endObject();
}

template <class Texts>
void addTexts(Texts const& texts, JsonBuilder& json) {
  json.beginArray();
  for (auto const& text : texts) {
    json.text(text);
  }
  json.endArray();
}

}  // namespace

std::string beginJsonDocument(Selection const& selection) {
  auto const& options = selection.getOptions();
  auto const now = std::chrono::floor<std::chrono::seconds>(options.timeZone.toLocal(options.now));
  std::string head;
  JsonBuilder json(head);
  json.beginObject().key("version").number(jsonVersion).key("file").text(selection.getFile());
  json.key("now").text(Words::toText(now)).key("timeZone").text(options.timeZone.getName());
  json.key("locale").text(options.localeName);
  return head;
}

std::string beginJsonLine(Selection const& selection, Workbook::Sheet const& sheet) {
  std::string head;
  JsonBuilder(head)
      .beginObject()
      .key("file")
      .text(selection.getFile())
      .key("sheet")
      .text(sheet.name);
  return head;
}

std::string toJsonSummary(Selection const& selection, Report const& report) {
  RuleCounts const counts(selection.getRules());
  std::string summary;
  JsonBuilder json(summary);
  json.beginObject().key("read").number(counts.read).key("resolved").number(counts.resolved);
  json.key("notResolved").beginObject();
  for (auto const& [kind, ofKind] : counts.notResolvedByKind) {
    json.key(kind).number(ofKind.count);
  }
  json.endObject().key("doubtful").number(counts.doubtful);
  json.key("failed").number(report.countFailedRules());
  addTexts(counts.unknownFunctions, json.key("unknownFunctions"));
  json.key("problems").beginArray();
  for (auto const& problem : report.listProblems()) {
    addProblem(problem, selection.getDocument(), json);
  }
  json.endArray();
  addTexts(report.getClippedSheets(), json.key("clippedSheets"));
  json.key("complete").boolean(report.isComplete()).endObject();
  return summary;
}

std::string toJsonRules(Selection const& selection, Report const& report) {
  auto const& document = selection.getDocument();
  std::string text = beginJsonDocument(selection) + ",\"sheets\":";
  JsonBuilder json(text);
  json.beginArray();
  for (auto const sheet : selection.getSheets()) {
    json.beginObject().key("name").text(document.getSheets()[sheet].name);
    json.key("rules").beginArray();
    for (auto const* rule : selection.getRulesByPriority(sheet)) {
      json.raw(Records::toJsonText(document, *rule));
    }
    json.endArray().endObject();
  }
  json.endArray();
  return Records::indentJson(text + ",\"summary\":" + toJsonSummary(selection, report) + "}");
}

}  // namespace Zorv::Tool
