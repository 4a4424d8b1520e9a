#pragma once

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/Table.h"
#include "Formulas/OneTableDocument.h"

namespace Zorv::TestSupport {

/// The values that a table's cells hold, for tests and benchmarks that run the real engine without
/// a workbook. Borrows the table.
class PlainValueContextProvider final : public ConditionalFormatters::ValueContextProvider {
public:
  explicit PlainValueContextProvider(DOM::Table const& table) : _document(table) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    auto const* const cell = cellInfo.getCell();
    return cell != nullptr ? cell->value : FormulaValue();
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override {
    return _document.getTimeZone();
  }
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    return _document;
  }

private:
  Formulas::OneTableDocument _document;
};

}  // namespace Zorv::TestSupport
