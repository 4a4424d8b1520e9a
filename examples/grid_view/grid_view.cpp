// Draws the part of a table that is in sight, again after each edit. The calculator remembers the
// style of every cell that it was asked about, so a frame without an edit evaluates nothing. The
// program says after each edit what it may have changed.

#include <cstddef>
#include <iomanip>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

#include <boost/variant/get.hpp>

#include <zorv/ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h>
#include <zorv/DOM/Styles.h>
#include <zorv/DOM/Table.h>
#include <zorv/Formulas/OneTableDocument.h>
#include <zorv/Formulas/ParseExpr.h>

using namespace Zorv;
using FormulaModel::FormulaNumber;
using FormulaModel::FormulaString;

namespace {

/// The values of a table's cells. Counts how often it is asked. Borrows the table.
class CellValues final : public ConditionalFormatters::ValueContextProvider {
public:
  CellValues(DOM::Table const& table, std::size_t& questions)
      : _document(table), _questions(questions) {}

  FormulaValue getCellValue(DOM::CellInfo const& cell) const override {
    ++_questions;  // this program asks from one thread only
    return cell.getCell() ? cell.getCell()->value : FormulaValue();
  }
  DOM::TimeZone const& getTimeZone() const override { return _document.getTimeZone(); }
  Formulas::ContextProvider const& getFormulasContextProvider() const override { return _document; }

private:
  Formulas::OneTableDocument _document;
  std::size_t& _questions;
};

/// A table on a screen.
class Grid {
public:
  // [edits]
  void setValue(unsigned long row, unsigned long column, FormulaValue value) {
    _table.setValue(row, column, std::move(value));
    _calculator.clearCellStylesCache();  // this value may decide the style of any cell
  }

  void insertRows(unsigned long before, unsigned long count) {
    _table.insertRows(before, count);
    _calculator.clearTablesRangesCache();  // the ranges of the formats lie elsewhere now
    _calculator.clearCellStylesCache();
  }

  void addFormat(TableRange const& range, DOM::ConditionalFormatOperator condition,
                 UUID const& style) {
    _table.addConditionalFormat({range}, std::move(condition), style);
    _calculator.clearTablesRangesCache();
    _calculator.clearCellStylesCache();
  }
  // [edits]

  UUID addStyle(DOM::RunProps run) {
    UUID const name = UUID::generate();
    auto props = std::make_shared<DOM::RunProps const>(std::move(run));
    _styles.getTableStyles()[name].setRunProps(std::move(props));
    return name;
  }

  // [draw]
  /// Draws the cells of a range. Bold texts have stars, struck ones dashes.
  void draw(TableRange const& inSight) {
    std::size_t const before = _questions;
    for (auto row = inSight.firstRow; row < inSight.endRow; ++row) {
      for (auto column = inSight.firstColumn; column < inSight.endColumn; ++column) {
        DOM::CellInfo const cell = _table.getCellInfo(row, column);
        auto const style = _calculator.getConditionalFormatCellStyle(_styles, cell);
        std::cout << std::setw(10) << decorate(toText(cell), style);
      }
      std::cout << '\n';
    }
    std::cout << "the provider was asked " << _questions - before << " times\n";
  }
  // [draw]

private:
  static std::string toText(DOM::CellInfo const& cell) {
    if (!cell.getCell()) {
      return ".";
    }
    if (auto const* string = boost::get<FormulaString>(&cell.getCell()->value)) {
      return string->value;
    }
    std::ostringstream text;
    text << boost::get<FormulaNumber>(cell.getCell()->value).value.get();
    return text.str();
  }

  static std::string decorate(std::string text, DOM::SharedCellStylePtr const& style) {
    auto const run = style ? style->get().getRunProps() : nullptr;
    if (run && run->bold == true) {
      text = '*' + text + '*';
    }
    if (run && run->strikethrough == true) {
      text = '-' + text + '-';
    }
    return text;
  }

  DOM::Table _table;
  DOM::Styles _styles;
  std::size_t _questions = 0;
  ConditionalFormatters::ConditionalFormattingPropsCalculator _calculator{
      std::make_unique<CellValues>(_table, _questions)};
};

FormulaValue number(double value) { return FormulaNumber{FloatNumber(value)}; }

}  // namespace

int main() {
  Grid grid;
  unsigned long row = 0;
  for (auto const& [name, count] : {std::pair("bolts", 120), {"nuts", 8}, {"screws", 64}}) {
    grid.setValue(row, 0, FormulaString{name});
    grid.setValue(row++, 1, number(count));
  }
  UUID const bold = grid.addStyle({.bold = true});
  grid.addFormat({0, 1, 3, 2},
                 DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::Less,
                                                     Formulas::parseExpr("10")),
                 bold);

  TableRange const inSight{0, 0, 4, 2};
  std::cout << "few in stock\n";
  grid.draw(inSight);
  std::cout << "\nthe same frame again\n";
  grid.draw(inSight);

  std::cout << "\nscrews are sold\n";
  grid.setValue(2, 1, number(2));
  grid.draw(inSight);

  std::cout << "\na row is inserted\n";
  grid.insertRows(1, 1);
  grid.draw(inSight);

  std::cout << "\nthe names of the largest stock are struck\n";
  UUID const struck = grid.addStyle({.strikethrough = true});
  grid.addFormat({0, 0, 4, 1},
                 DOM::UnaryConditionalFormatOperator(DOM::UnaryConditionalFormatType::FormulaIsTrue,
                                                     Formulas::parseExpr("$B1=MAX($B$1:$B$4)")),
                 struck);
  grid.draw(inSight);
}
