#include "workbook/DocumentValueProvider.h"

#include <utility>

namespace Zorv::Workbook {

DocumentValueProvider::DocumentValueProvider(Document const& document,
                                             std::string const& localeName, DOM::TimeZone timeZone)
    : _contextProvider(document, localeName, std::move(timeZone)) {}

DocumentValueProvider::~DocumentValueProvider() = default;

FormulaValue DocumentValueProvider::getCellValue(DOM::CellInfo const& cellInfo) const {
  DOM::Cell const* cell = cellInfo.getCell();
  return cell ? cell->value : FormulaValue();
}

DOM::TimeZone const& DocumentValueProvider::getTimeZone() const {
  return _contextProvider.getTimeZone();
}

Formulas::ContextProvider const& DocumentValueProvider::getFormulasContextProvider() const {
  return _contextProvider;
}

}  // namespace Zorv::Workbook
