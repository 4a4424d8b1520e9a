#include <string>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "records/JsonText.h"
#include "records/VisualJson.h"
#include "tool/Output/CellTextCaches.h"
#include "tool/Output/FieldLines.h"
#include "tool/Output/JsonDocument.h"
#include "tool/Output/ResolveOutput.h"
#include "words/CellText.h"
#include "words/StyleText.h"
#include "words/VisualText.h"

// Resolved cells one a line, each line complete in itself.
namespace Zorv::Tool {

namespace {

std::string listRuleNumbers(std::span<Workbook::Rule const* const> rules) {
  std::string numbers;
  for (auto const* rule : rules) {
    numbers += fmt::format("{}{}", numbers.empty() ? "" : " ", rule->number);
  }
  return numbers;
}

std::string_view shownText(ResolvedCell const& cell, Words::CellFormatter& formatter) {
  auto const* const cellObject = cell.cellInfo.getCell();
  return cellObject == nullptr
             ? std::string_view()
             : formatter.toText(*cellObject, cell.getStyle().getCellFormat().get());
}

class ResolveFields final : public ResolveOutput {
public:
  ResolveFields(Selection const& selection, OfficeUtils::LocaleContext const& locale,
                bool isFirstFile, OutputBuffer& out)
      : _formatter(locale), _lines(selection, out) {
    if (isFirstFile) {
      _lines.addHeadings({"sheet", "cell", "value", "shown", "style", "visuals", "rules"});
    }
  }

  void beginSheet(Workbook::Sheet const& sheet) override { _sheet = sheet.name; }

  void add(ResolvedCell const& cell) override {
    auto const* const cellObject = cell.cellInfo.getCell();
    auto const& style =
        _styles.getOrCreate(cell.style, [&] { return Words::describe(cell.getStyle()); });
    auto const& rules =
        _rules.getOrCreate(cell.deciding, [&] { return listRuleNumbers(cell.deciding); });
    _lines.addLine({_sheet, DOM::A1Notation::toAddress(cell.cellInfo.getCellIndex()),
                    cellObject != nullptr ? Words::toRawText(cellObject->value) : "",
                    shownText(cell, _formatter), style, Words::describe(cell.visuals), rules});
  }

  void finish() override {}

private:
  Words::CellFormatter _formatter;
  FieldLines _lines;
  std::string _sheet;
  StyleTextCache _styles;
  DecidingRulesCache _rules;
};

class ResolveJsonLines final : public ResolveOutput {
public:
  ResolveJsonLines(Selection const& selection, OfficeUtils::LocaleContext const& locale,
                   OutputBuffer& out)
      : _selection(selection), _formatter(locale), _out(out) {}

  void beginSheet(Workbook::Sheet const& sheet) override {
    _front = beginJsonLine(_selection, sheet);
  }

  void add(ResolvedCell const& cell) override {
    auto const* const cellObject = cell.cellInfo.getCell();
    auto& text = _out.text();
    text += _front;
    text += ",\"cell\":\"";
    text += DOM::A1Notation::toAddress(cell.cellInfo.getCellIndex());
    text += "\",\"value\":";
    Records::appendJsonValue(text, cellObject != nullptr ? cellObject->value : FormulaValue());
    text += ",\"shown\":";
    Records::appendJsonText(text, shownText(cell, _formatter));
    text += ",\"style\":";
    text += _styles.getOrCreate(cell.style, [&] { return Records::toJsonText(cell.getStyle()); });
    Records::appendJsonVisuals(text, cell.visuals, cell.visualRules);
    text += ",\"rules\":";
    text += _rules.getOrCreate(cell.deciding, [&] { return Records::toJsonText(cell.deciding); });
    text += "}\n";
    _out.endEntry();
  }

  void finish() override {}

private:
  Selection const& _selection;
  Words::CellFormatter _formatter;
  OutputBuffer& _out;
  std::string _front;  ///< the first members of each line
  StyleTextCache _styles;
  DecidingRulesCache _rules;
};

}  // namespace

std::unique_ptr<ResolveOutput> makeResolveFields(Selection const& selection,
                                                 OfficeUtils::LocaleContext const& locale,
                                                 bool isFirstFile, OutputBuffer& out) {
  return std::make_unique<ResolveFields>(selection, locale, isFirstFile, out);
}

std::unique_ptr<ResolveOutput> makeResolveJsonLines(Selection const& selection,
                                                    OfficeUtils::LocaleContext const& locale,
                                                    OutputBuffer& out) {
  return std::make_unique<ResolveJsonLines>(selection, locale, out);
}

}  // namespace Zorv::Tool
