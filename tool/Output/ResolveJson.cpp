#include <string>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "records/JsonText.h"
#include "records/VisualJson.h"
#include "tool/Output/CellTextCaches.h"
#include "tool/Output/JsonDocument.h"
#include "tool/Output/ResolveOutput.h"
#include "words/CellText.h"

namespace Zorv::Tool {

namespace {

/// Writes each cell at once, so that memory does not grow with the file.
class ResolveJson final : public ResolveOutput {
public:
  ResolveJson(Selection const& selection, OfficeUtils::LocaleContext const& locale,
              Report const& report, OutputBuffer& out)
      : _selection(selection), _formatter(locale), _report(report), _out(out) {
    _out.text() += beginJsonDocument(selection) + ",\"sheets\":[";
    setEarlyEnd();
  }

  void beginSheet(Workbook::Sheet const& sheet) override {
    _out.text() += _hasSheet ? "\n]},\n{\"name\":" : "\n{\"name\":";
    Records::appendJsonText(_out.text(), sheet.name);
    _out.text() += ",\"cells\":[";
    _hasSheet = true;
    _hasCell = false;
    setEarlyEnd();
  }

  void add(ResolvedCell const& cell) override {
    auto const* const cellObject = cell.cellInfo.getCell();
    auto& text = _out.text();
    text += _hasCell ? ",\n{\"cell\":\"" : "\n{\"cell\":\"";
    text += DOM::A1Notation::toAddress(cell.cellInfo.getCellIndex());
    text += "\",\"value\":";
    Records::appendJsonValue(text, cellObject != nullptr ? cellObject->value : FormulaValue());
    text += ",\"shown\":";
    auto const* const format = cell.getStyle().getCellFormat().get();
    Records::appendJsonText(text,
                            cellObject != nullptr ? _formatter.toText(*cellObject, format) : "");
    text += ",\"style\":";
    text += _styles.getOrCreate(cell.style, [&] { return Records::toJsonText(cell.getStyle()); });
    Records::appendJsonVisuals(text, cell.visuals, cell.visualRules);
    text += ",\"rules\":";
    text += _rules.getOrCreate(cell.deciding, [&] { return Records::toJsonText(cell.deciding); });
    text += '}';
    _out.endEntry();
    _hasCell = true;
  }

  void finish() override {
    _out.text() += _hasSheet ? "\n]}\n],\"summary\":" : "\n],\"summary\":";
    _out.text() += toJsonSummary(_selection, _report) + "}\n";
  }

private:
  void setEarlyEnd() {
    _out.setEarlyEnd(
        fmt::format("{}\n],\"summary\":{{\"complete\":false}}}}\n", _hasSheet ? "\n]}" : ""));
  }

  Selection const& _selection;
  Words::CellFormatter _formatter;
  Report const& _report;
  OutputBuffer& _out;
  StyleTextCache _styles;
  DecidingRulesCache _rules;
  bool _hasSheet = false;
  bool _hasCell = false;
};

}  // namespace

std::unique_ptr<ResolveOutput> makeResolveJson(Selection const& selection,
                                               OfficeUtils::LocaleContext const& locale,
                                               Report const& report, OutputBuffer& out) {
  return std::make_unique<ResolveJson>(selection, locale, report, out);
}

}  // namespace Zorv::Tool
