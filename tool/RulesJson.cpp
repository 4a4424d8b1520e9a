#include <ostream>

#include "tool/Json.h"
#include "tool/RulesOutput.h"

namespace Zorv::Tool {

namespace {

Json describeRule(Workbook::Document const& document, Workbook::Rule const& rule) {
  auto json = toJson(rule);
  json["formulas"] = rule.formulas;
  json["resolved"] = rule.format != nullptr;
  if (rule.format) {
    json["style"] = toJson(findStyle(document, rule));
  } else {
    json["reason"] = rule.unresolvedReason;
  }
  return json;
}

}  // namespace

void printRulesJson(Selection const& selection, std::ostream& out) {
  auto const& document = selection.getDocument();
  auto json = describeRun(selection);
  auto& sheets = json["sheets"] = Json::array();
  for (auto const sheet : selection.getSheets()) {
    auto rules = Json::array();
    for (auto const* rule : selection.getRulesByPriority(sheet)) {
      rules.push_back(describeRule(document, *rule));
    }
    sheets.push_back({{"name", document.getSheets()[sheet].name}, {"rules", rules}});
  }
  json["summary"] = summarise(selection);
  constexpr int indent = 2;
  out << json.dump(indent, ' ', false, Json::error_handler_t::replace) << '\n';
}

}  // namespace Zorv::Tool
