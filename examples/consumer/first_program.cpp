#include <iostream>
#include <memory>

#include <zorv/ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h>
#include <zorv/DOM/Styles.h>
#include <zorv/DOM/Table.h>
#include <zorv/Formulas/OneTableDocument.h>
#include <zorv/Formulas/ParseExpr.h>

using namespace Zorv;

struct CellValues final : ConditionalFormatters::ValueContextProvider {
  explicit CellValues(DOM::Table const& table) : document(table) {}
  FormulaValue getCellValue(DOM::CellInfo const& cell) const override {
    return cell.getCell() ? cell.getCell()->value : FormulaValue();
  }
  DOM::TimeZone const& getTimeZone() const override { return document.getTimeZone(); }
  Formulas::ContextProvider const& getFormulasContextProvider() const override { return document; }
  Formulas::OneTableDocument const document;
};

int main() {
  DOM::Table table;
  for (unsigned long row = 0; double const number : {120, 340, 90, 410}) {
    table.setValue(row++, 0, FormulaModel::FormulaNumber{FloatNumber(number)});
  }
  DOM::Styles styles;
  UUID const bold = UUID::generate();
  auto const props = std::make_shared<DOM::RunProps const>(DOM::RunProps{.bold = true});
  styles.getTableStyles()[bold].setRunProps(props);
  DOM::UnaryConditionalFormatOperator condition(DOM::UnaryConditionalFormatType::Greater,
                                                Formulas::parseExpr("AVERAGE(A$1:A$4)"));
  table.addConditionalFormat({{0, 0, 4, 1}}, std::move(condition), bold);
  ConditionalFormatters::ConditionalFormattingPropsCalculator const calculator(
      std::make_unique<CellValues>(table));
  for (unsigned long row = 0; row < 4; ++row) {
    auto const style = calculator.getConditionalFormatCellStyle(styles, table.getCellInfo(row, 0));
    std::cout << (style && style->get().getRunProps()->bold == true ? "bold\n" : "plain\n");
  }
}
