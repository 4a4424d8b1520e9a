#include "records/DifferenceJson.h"

#include <string>

#include "DOM/A1Notation.h"
#include "records/JsonText.h"
#include "words/DifferenceText.h"
#include "words/VisualText.h"

namespace Zorv::Records {

void DifferenceJson::write(Analysis::RuleDifference const& difference) {
  auto const& document = difference.first != nullptr ? _first : _second;
  auto const& rule = difference.first != nullptr ? *difference.first : *difference.second;
  _json.beginObject().key("sheet").text(document.getSheets()[rule.sheet].name);
  _json.key("change").text(Words::describeChange(difference)).key("first");
  addRule(_first, difference.first);
  _json.key("second");
  addRule(_second, difference.second);
  _json.endObject();
}

void DifferenceJson::write(Analysis::CellDifference const& difference) {
  _json.beginObject().key("sheet").text(_first.getSheets()[difference.firstSheet].name);
  _json.key("cell").text(DOM::A1Notation::toAddress(difference.cell)).key("first");
  addLook(difference.first);
  _json.key("second");
  addLook(difference.second);
  _json.endObject();
}

void DifferenceJson::addRule(Workbook::Document const& document, Workbook::Rule const* rule) {
  rule != nullptr ? _json.raw(toJsonText(document, *rule)) : _json.null();
}

void DifferenceJson::addLook(Analysis::CellLook const& look) {
  _json.beginObject();
  if (look.hasFailed) {
    _json.key("failed").boolean(true);
  } else {
    _json.key("style").raw(look.style ? toJsonText(look.style->get()) : "{}");
    if (std::string const visuals = Words::describe(look.visuals); !visuals.empty()) {
      _json.key("visuals").text(visuals);
    }
  }
  _json.endObject();
}

}  // namespace Zorv::Records
