#include <optional>
#include <string>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "tool/Output/CellTextCaches.h"
#include "tool/Output/ColumnWidths.h"
#include "tool/Output/ResolveOutput.h"
#include "tool/Text/TextTable.h"
#include "words/CellText.h"
#include "words/ConditionText.h"
#include "words/Printable.h"
#include "words/StyleText.h"
#include "words/VisualText.h"

namespace Zorv::Tool {

namespace {

/// `17: top 3 on F4:F15 (priority 1)`
std::string describeDecidingRule(Workbook::Rule const& rule) {
  auto const priority =
      rule.priority ? fmt::format("priority {}", *rule.priority) : std::string("no priority");
  return fmt::format("{}: {} on {} ({}{})", rule.number, Words::describeCondition(rule),
                     Words::describeRanges(rule), priority, rule.stopIfTrue ? ", stops" : "");
}

/// The rules, or as many as are wider than the column.
std::string describeDecidingRules(std::span<Workbook::Rule const* const> rules) {
  std::string text;
  for (auto const* rule : rules) {
    if (text.size() > ColumnWidths::rules * 4) {
      break;
    }
    text += fmt::format("{}{}", text.empty() ? "" : "; ", describeDecidingRule(*rule));
  }
  return text;
}

/// The texts of a style, unless it sets nothing, and of visuals.
std::string addVisuals(std::string const& style, Visuals::CellVisuals const& visuals) {
  static std::string const nothing = Words::describe(DOM::CellStyle());
  return style == nothing ? Words::describe(visuals)
                          : fmt::format("{}, {}", style, Words::describe(visuals));
}

/// The colour that fills the cell.
std::optional<DOM::Colour> findShownFill(ResolvedCell const& cell) {
  auto const& scale = cell.visuals.scale;
  return scale && !scale->isBehindFill ? scale->colour : Words::findFillColour(cell.getStyle());
}

class ResolveTable final : public ResolveOutput {
public:
  ResolveTable(OfficeUtils::LocaleContext const& locale, Terminal const& terminal,
               OutputBuffer& out)
      : _formatter(locale),
        _table({{"SHEET", ColumnWidths::name},
                {"CELL", ColumnWidths::name},
                {"VALUE", ColumnWidths::value},
                {"STYLE", ColumnWidths::style, true},
                {"RULES", ColumnWidths::rules}},
               out, terminal) {}

  void beginSheet(Workbook::Sheet const& sheet) override {
    _sheet = Words::shorten(sheet.name, ColumnWidths::name);
  }

  void add(ResolvedCell const& cell) override {
    auto const* const cellObject = cell.cellInfo.getCell();
    auto const* const format = cell.getStyle().getCellFormat().get();
    auto const& style = _styles.getOrCreate(cell.style, [&] {
      return Words::shorten(Words::describe(cell.getStyle()), ColumnWidths::style);
    });
    auto const& rules = _rules.getOrCreate(cell.deciding, [&] {
      return Words::shorten(describeDecidingRules(cell.deciding), ColumnWidths::rules);
    });
    auto const address = DOM::A1Notation::toAddress(cell.cellInfo.getCellIndex());
    _table.addRow(
        {_sheet, address, cellObject != nullptr ? _formatter.toText(*cellObject, format) : "",
         cell.visuals.isEmpty() ? style : addVisuals(style, cell.visuals), rules},
        findShownFill(cell));
  }

  void finish() override { _table.finish(); }

private:
  Words::CellFormatter _formatter;
  TextTable _table;
  std::string _sheet;
  StyleTextCache _styles;
  DecidingRulesCache _rules;
};

}  // namespace

std::unique_ptr<ResolveOutput> makeResolveTable(OfficeUtils::LocaleContext const& locale,
                                                Terminal const& terminal, OutputBuffer& out) {
  return std::make_unique<ResolveTable>(locale, terminal, out);
}

}  // namespace Zorv::Tool
