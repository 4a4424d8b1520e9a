#include "tool/Output/TidyOutput.h"

#include <string>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "records/JsonText.h"
#include "tool/Output/ColumnWidths.h"
#include "tool/Output/JsonDocument.h"
#include "tool/Text/TextTable.h"
#include "words/Printable.h"

namespace Zorv::Tool {

namespace {

using Analysis::SheetPlan;
using Analysis::TidyPlan;

struct TidyCounts {
  std::size_t before = 0;
  std::size_t after = 0;
};

TidyCounts countRules(TidyPlan const& plan) {
  TidyCounts counts;
  for (SheetPlan const& sheet : plan.sheets) {
    counts.before += sheet.ruleCount;
    counts.after += sheet.countRulesAfter();
  }
  return counts;
}

std::string describeCount(std::size_t count) {
  return count == 1 ? "1 rule" : fmt::format("{} rules", count);
}

std::string describeJoined(Analysis::JoinedRules const& rules) {
  return fmt::format("takes in {} {}", rules.joined.size() == 1 ? "rule" : "rules",
                     fmt::join(rules.joined, ", "));
}

void printSteps(Selection const& selection, TidyPlan const& plan, Terminal const& terminal,
                OutputBuffer& out) {
  TextTable table({{"SHEET", ColumnWidths::name},
                   {"RULE", ColumnWidths::number},
                   {"PLAN", ColumnWidths::rules},
                   {"RANGES", ColumnWidths::rules}},
                  out, terminal);
  for (SheetPlan const& sheet : plan.sheets) {
    auto const& name = selection.getDocument().getSheets()[sheet.sheet].name;
    for (auto const& rules : sheet.joined) {
      table.addRow({name, std::to_string(rules.rule), describeJoined(rules),
                    DOM::A1Notation::toAddress(rules.ranges)});
    }
    for (auto const& rule : sheet.dead) {
      table.addRow({name, std::to_string(rule.rule),
                    rule.cover
                        ? fmt::format("goes: rule {} comes first on all its cells", *rule.cover)
                        : "goes: its formula is always an error",
                    "-"});
    }
  }
  table.finish();
  out.text() += '\n';
}

void printCounts(Selection const& selection, TidyPlan const& plan, Terminal const& terminal,
                 OutputBuffer& out) {
  TextTable table({{"SHEET", ColumnWidths::name},
                   {"RULES", ColumnWidths::number},
                   {"AFTER", ColumnWidths::number},
                   {"NOTE", ColumnWidths::condition}},
                  out, terminal);
  for (SheetPlan const& sheet : plan.sheets) {
    table.addRow({selection.getDocument().getSheets()[sheet.sheet].name,
                  std::to_string(sheet.ruleCount), std::to_string(sheet.countRulesAfter()),
                  sheet.untouchedReason.empty()
                      ? "-"
                      : fmt::format("left as it is: {}", sheet.untouchedReason)});
  }
  table.finish();
}

std::string describeOutcome(Selection const& selection, TidyPlan const& plan,
                            TidyResult const& result) {
  auto const counts = countRules(plan);
  auto const target = Words::toPrintable(selection.getOptions().tidy.target);
  std::string const change =
      plan.changesNothing()
          ? fmt::format("{}, nothing to tidy", describeCount(counts.before))
          : fmt::format("{} before, {} after", describeCount(counts.before), counts.after);
  if (!result.isWritten) {
    return change + "; nothing is written";
  }
  return plan.changesNothing()
             ? fmt::format("{}; {} is a copy", change, target)
             : fmt::format("{}; written to {}: {} positions compared, all look as before", change,
                           target, result.comparedCells);
}

std::string toJson(SheetPlan const& sheet, std::string const& name) {
  std::string json = "{\"name\":";
  Records::appendJsonText(json, name);
  json += fmt::format(",\"rulesBefore\":{},\"rulesAfter\":{},\"joined\":[", sheet.ruleCount,
                      sheet.countRulesAfter());
  for (auto const& rules : sheet.joined) {
    json += fmt::format("{}{{\"rule\":{},\"takesIn\":[{}],\"ranges\":\"{}\"}}",
                        &rules == &sheet.joined.front() ? "" : ",", rules.rule,
                        fmt::join(rules.joined, ","), DOM::A1Notation::toAddress(rules.ranges));
  }
  json += "],\"dropped\":[";
  for (auto const& rule : sheet.dead) {
    json +=
        fmt::format("{}{{\"rule\":{},\"coveredBy\":{}}}", &rule == &sheet.dead.front() ? "" : ",",
                    rule.rule, rule.cover ? std::to_string(*rule.cover) : "null");
  }
  json += "],\"leftAsItIs\":";
  if (sheet.untouchedReason.empty()) {
    json += "null";
  } else {
    Records::appendJsonText(json, sheet.untouchedReason);
  }
  return json + '}';
}

}  // namespace

void printTidyTable(Selection const& selection, TidyPlan const& plan, TidyResult const& result,
                    Terminal const& terminal, OutputBuffer& out) {
  if (!result.isWritten && !plan.changesNothing()) {
    printSteps(selection, plan, terminal, out);
  }
  if (!plan.sheets.empty()) {
    printCounts(selection, plan, terminal, out);
    out.text() += '\n';
  }
  out.text() += describeOutcome(selection, plan, result) + '\n';
  out.endEntry();
}

void printTidyJson(Selection const& selection, TidyPlan const& plan, TidyResult const& result,
                   OutputBuffer& out) {
  auto& json = out.text();
  json += beginJsonDocument(selection) + ",\"sheets\":[\n";
  for (SheetPlan const& sheet : plan.sheets) {
    json += toJson(sheet, selection.getDocument().getSheets()[sheet.sheet].name);
    json += &sheet == &plan.sheets.back() ? "\n" : ",\n";
  }
  auto const counts = countRules(plan);
  json += fmt::format("],\"summary\":{{\"rulesBefore\":{},\"rulesAfter\":{},\"written\":",
                      counts.before, counts.after);
  if (result.isWritten) {
    Records::appendJsonText(json, selection.getOptions().tidy.target);
  } else {
    json += "null";
  }
  json += fmt::format(",\"comparedPositions\":{},\"breaksSignature\":{}}}}}\n",
                      result.comparedCells, plan.breaksSignature);
  out.endEntry();
}

}  // namespace Zorv::Tool
