#include "support/RecordingValueContextProvider.h"

#include <string>

namespace Zorv::TestSupport {

RecordingValueContextProvider::~RecordingValueContextProvider() {
  _journal.note("~ValueContextProvider");
}

FormulaValue RecordingValueContextProvider::getCellValue(DOM::CellInfo const& cellInfo) const {
  _journal.note("getCellValue(" + std::to_string(cellInfo.getRowIndex()) + "," +
                std::to_string(cellInfo.getColIndex()) + ")");
  if (_answer) {
    return _answer(cellInfo);
  }
  return cellInfo.getCell() == nullptr ? FormulaValue() : cellInfo.getCell()->value;
}

DOM::TimeZone const& RecordingValueContextProvider::getTimeZone() const {
  _journal.note("getTimeZone");
  return _contextProvider.getTimeZone();
}

Formulas::ContextProvider const& RecordingValueContextProvider::getFormulasContextProvider() const {
  _journal.note("getFormulasContextProvider");
  return _contextProvider;
}

}  // namespace Zorv::TestSupport
