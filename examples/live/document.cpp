#include "document.h"

#include <charconv>
#include <utility>

#include <boost/variant/get.hpp>

#include <zorv/ConditionalFormatters/CndFrmt_ValueContextProvider.h>
#include <zorv/Formulas/OneTableDocument.h>
#include <zorv/Formulas/ParseExpr.h>

using namespace Zorv;
using namespace Zorv::DOM;
using FormulaModel::FormulaNumber;
using FormulaModel::FormulaString;

namespace {

class CellValues final : public ConditionalFormatters::ValueContextProvider {
public:
  explicit CellValues(Table const& table) : _document(table) {}

  FormulaValue getCellValue(CellInfo const& cell) const override {
    return cell.getCell() != nullptr ? cell.getCell()->value : FormulaValue();
  }
  TimeZone const& getTimeZone() const override { return _document.getTimeZone(); }
  Formulas::ContextProvider const& getFormulasContextProvider() const override { return _document; }

private:
  Formulas::OneTableDocument _document;
};

FormulaValue number(double value) { return FormulaNumber{FloatNumber(value)}; }

ConditionalFormatOperator formula(std::string const& text) {
  return UnaryConditionalFormatOperator(UnaryConditionalFormatType::FormulaIsTrue,
                                        Formulas::parseExpr(text));
}

}  // namespace

Document::Document(unsigned long rowCount) {
  for (unsigned long row = 0; row < rowCount; ++row) {
    // Amounts look random, and few of them occur twice.
    table.setValue(row, 0, number(static_cast<double>(row * 7'919 % (2 * rowCount + 1))));
    table.setValue(row, 1, FormulaString{row % 17 == 3 ? "late" : "paid"});
  }
  TableRange const amounts{0, 0, rowCount, 1};
  TableRange const states{0, 1, rowCount, 2};
  addRule(amounts,
          TopBottomConditionalFormatOperator(TopBottomConditionalFormatType::Top, 10, false),
          {0, 130, 0});
  addRule(amounts, UniquenessConditionalFormatOperator{UniquenessType::Duplicate}, {150, 110, 0});
  addRule(
      amounts,
      UnaryConditionalFormatOperator(UnaryConditionalFormatType::Less, Formulas::parseExpr("1000")),
      {150, 0, 0});
  addRule(states,
          TextConditionalFormatOperator(TextConditionalFormatType::BeginsWith, std::string("late")),
          {130, 0, 130});
  addRule({0, 0, rowCount, 2}, formula("$B1=\"late\""), {80, 0, 80});
  addRule(amounts, formula("A1>A2+1000000"), {0, 90, 120});
  addRule(amounts, AboveAverageConditionalFormatOperator(AboveAverageConditionalFormatType::Above),
          {0, 60, 100});
  addRule(states, NullaryConditionalFormatOperator(NullaryConditionalFormatType::Blanks),
          {70, 70, 70});
  calculator = std::make_unique<ConditionalFormatters::ConditionalFormattingPropsCalculator>(
      std::make_unique<CellValues>(table));
}

void Document::addRule(TableRange const& range, ConditionalFormatOperator condition, Colour fill) {
  UUID const name = UUID::generate();
  CellProps props;
  props.fillColour = fill;
  styles.getTableStyles()[name].setCellProps(std::make_shared<CellProps const>(props));
  table.addConditionalFormat({range}, std::move(condition), name);
}

std::string toText(CellInfo const& cell) {
  if (cell.getCell() == nullptr) {
    return {};
  }
  if (auto const* text = boost::get<FormulaString>(&cell.getCell()->value)) {
    return text->value;
  }
  std::string digits(32, '\0');
  double const value = boost::get<FormulaNumber>(cell.getCell()->value).value.get();
  auto const written = std::to_chars(digits.data(), digits.data() + digits.size(), value);
  digits.resize(static_cast<std::size_t>(written.ptr - digits.data()));
  return digits;
}

FormulaValue toValue(std::string const& text) {
  double value = 0;
  auto const* const end = text.data() + text.size();
  auto const read = std::from_chars(text.data(), end, value);
  return read.ec == std::errc() && read.ptr == end ? number(value)
                                                   : FormulaValue(FormulaString{text});
}
