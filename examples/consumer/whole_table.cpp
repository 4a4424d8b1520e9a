// Builds a table with two conditional formats and asks which styles they give its cells, all at
// once.

#include <cstdlib>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include <zorv/ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h>
#include <zorv/ConditionalFormatters/CndFrmt_TableResolver.h>
#include <zorv/DOM/Styles.h>
#include <zorv/DOM/Table.h>
#include <zorv/Formulas/OneTableDocument.h>
#include <zorv/Formulas/ParseExpr.h>

namespace DOM = Zorv::DOM;
using Zorv::ConditionalFormatters::ConditionalFormattingPropsCalculator;
using Zorv::ConditionalFormatters::FormatOutcome;
using Zorv::ConditionalFormatters::ResolvedCell;
using Zorv::ConditionalFormatters::TablePass;
using Zorv::ConditionalFormatters::ThresholdOperand;

namespace {

/// The values that a table's cells hold, in a document with a German locale and time zone.
/// Borrows the table.
class CellValues final : public Zorv::ConditionalFormatters::ValueContextProvider {
public:
  explicit CellValues(DOM::Table const& table)
      : _document(table, {.sheetName = "Numbers",
                          .locale = Zorv::OfficeUtils::LocaleContext("de-DE"),
                          .timeZone = DOM::TimeZone("Europe/Berlin")}) {}

  Zorv::FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    auto const* cell = cellInfo.getCell();
    return cell ? cell->value : Zorv::FormulaValue();
  }
  DOM::TimeZone const& getTimeZone() const override { return _document.getTimeZone(); }
  Zorv::Formulas::ContextProvider const& getFormulasContextProvider() const override {
    return _document;
  }

private:
  Zorv::Formulas::OneTableDocument _document;
};

/// Stops the program when an expectation does not hold; unlike assert, in optimised builds too.
void expect(bool holds, std::string const& what) {
  if (!holds) {
    std::cerr << "whole_table: not so: " << what << '\n';
    std::exit(EXIT_FAILURE);
  }
}

DOM::NamedTableStyle makeStyle(std::string name, DOM::RunProps run, DOM::CellProps cell) {
  DOM::NamedTableStyle style(std::move(name));
  style.setRunProps(std::make_shared<DOM::RunProps const>(std::move(run)));
  style.setCellProps(std::make_shared<DOM::CellProps const>(std::move(cell)));
  return style;
}

}  // namespace

int main() {
  // A table with five numbers in its first column, and two styles.
  DOM::Table table;
  unsigned long row = 0;
  for (double number : {12.0, 48.0, 31.0, 7.0, 40.0}) {
    table.setValue(row++, 0, Zorv::FormulaModel::FormulaNumber{Zorv::FloatNumber(number)});
  }

  DOM::Styles styles;
  auto const good = Zorv::UUID::generate();
  auto const bold = Zorv::UUID::generate();
  styles.getTableStyles()[good] =
      makeStyle("Good", {.colour = DOM::Colour{0, 97, 0}},
                {.fillPattern = DOM::FillPattern::Solid, .fillColour = DOM::Colour{198, 239, 206}});
  styles.getTableStyles()[bold] = makeStyle("Bold", {.bold = true}, {});

  // The two highest numbers are good; numbers above 35 are bold.
  Zorv::TableRange const column{0, 0, 5, 1};
  table.addConditionalFormat(
      {column},
      DOM::TopBottomConditionalFormatOperator(DOM::TopBottomConditionalFormatType::Top, 2, false),
      good);
  table.addConditionalFormat(
      {column},
      DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                          Zorv::Formulas::parseExpr("A1>35")),
      bold);

  // The calculator owns its provider and caches the styles of cells.
  ConditionalFormattingPropsCalculator const calculator(std::make_unique<CellValues>(table));
  auto const style = calculator.getConditionalFormatCellStyle(styles, table.getCellInfo(1, 0));
  auto const none = calculator.getConditionalFormatCellStyle(styles, table.getCellInfo(0, 0));

  // [table]
  // An export resolves all cells in one pass: each condition is prepared once, and four threads
  // share the work. The visitor is called for one cell at a time, row by row.
  auto const resolver = calculator.prepare(styles, table);
  std::vector<unsigned long> boldRows;
  TablePass const pass{.range = table.getUsedRange(), .threadCount = 4};
  resolver.visit(pass, [&](ResolvedCell const& cell) {
    if (cell.style && cell.style->get().getRunProps()->bold) {
      boldRows.push_back(cell.cellInfo.getRowIndex());
    }
  });

  // The same as rectangles of one style each.
  auto const runs = resolver.resolveRuns(pass);
  // [table]

  // [explain]
  // Why does A5 look as it does? Each format says what became of it, and which properties it sets;
  // a property that an earlier format has set names that one.
  auto const explanation = resolver.explain(table.getCellInfo(4, 0));
  std::vector<std::string> reasons;
  for (auto const& format : explanation.formats) {
    if (format.outcome == FormatOutcome::Holds) {
      for (auto const& property : format.properties) {
        reasons.push_back(std::string(property.name) +
                          (property.takenBy ? " is taken" : " is set"));
      }
    }
  }
  auto const& top = std::get<ThresholdOperand>(explanation.formats[0].operands);
  // [explain]

  expect(reasons == std::vector<std::string>{"fillPattern is set", "fillColour is set",
                                             "colour is set", "bold is set"},
         "both formats contribute to 40");
  expect(top.threshold && top.threshold->get() == 40 && top.rank == 2, "40 is the last of the top");
  expect(explanation.style == style, "an explanation has the style itself");
  expect(boldRows == std::vector{1UL, 4UL}, "48 and 40 are bold");
  expect(runs.size() == 2 && runs[0].range == Zorv::TableRange{1, 0, 2, 1} &&
             runs[1].range == Zorv::TableRange{4, 0, 5, 1},
         "two cells have a style, each by itself");
  expect(runs[0].style == style && runs[1].style == style, "whole tables have the same styles");
  expect(style != nullptr, "48 has a style");
  expect(style->get().getRunProps()->bold == true, "48 is bold");
  expect(style->get().getRunProps()->colour == DOM::Colour{0, 97, 0}, "48 has the text of Good");
  expect(style->get().getCellProps()->fillColour == DOM::Colour{198, 239, 206}, "48 has its fill");
  expect(none == nullptr, "12 has no style");
  expect(calculator.getConditionalFormatCellStyle(styles, table.getCellInfo(4, 0)) == style,
         "equal styles are one object");
  std::cout << "whole_table: every expectation holds\n";
}
