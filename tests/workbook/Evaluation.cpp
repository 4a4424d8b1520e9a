#include "workbook/Evaluation.h"

#include <stdexcept>

#include "ConditionalFormatters/CndFrmt_OperatorsFactory.h"
#include "DOM/A1Notation.h"
#include "FormulaModel/FormulaValueAccess.h"
#include "OfficeUtils/FormulaValueCast.h"
#include "workbook/DocumentValueProvider.h"

namespace Zorv::TestSupport {

namespace {

DOM::CellInfo cellAt(Workbook::Document const& document, std::size_t sheet,
                     std::string const& cell) {
  CellIndex const place = DOM::A1Notation::parseCell(cell).value();
  return document.getSheets().at(sheet).table->getCellInfo(place.getRow().get(),
                                                           place.getColumn().get());
}

}  // namespace

bool holds(Workbook::Document const& document, std::size_t rule, std::string const& cell) {
  Workbook::Rule const& record = document.getRules().at(rule);
  if (!record.format) {
    return false;
  }
  Workbook::DocumentValueProvider const provider(document, "en-US", DOM::TimeZone());
  ConditionalFormatters::OperatorsFactory const factory(
      provider, *document.getSheets().at(record.sheet).table);
  DOM::CellInfo const info = cellAt(document, record.sheet, cell);
  return (*factory.create({record.ranges, *record.format}))(
      {provider.getCellValue(info), info.getCellIndex()});
}

std::string describeCell(Workbook::Document const& document, std::string const& cell,
                         std::size_t sheet) {
  DOM::Cell const* const found = cellAt(document, sheet, cell).getCell();
  if (!found) {
    return "none";
  }
  constexpr char const* kinds[] = {"empty", "number ", "text ", "boolean ", "error "};
  return kinds[found->value.which()] +
         OfficeUtils::FormulaValueCast::toString(found->value, {}, nullptr);
}

DOM::NamedTableStyle const& styleOf(Workbook::Document const& document, std::size_t rule) {
  DOM::ConditionalFormat const* const format = document.getRules().at(rule).format;
  if (!format) {
    throw std::runtime_error("the rule is not resolved: " +
                             document.getRules().at(rule).unresolvedReason);
  }
  return document.getStyles().getTableStyles().at(format->getStyleUUID());
}

}  // namespace Zorv::TestSupport
