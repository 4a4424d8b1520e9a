#include "OneTableDocument.h"

#include <utility>

OneTableDocument::OneTableDocument(Zorv::DOM::Table const& table, std::string sheetName)
    : _table(table), _sheetName(std::move(sheetName)) {}

Zorv::FormulaModel::DocTableIndex OneTableDocument::getDocTableIndex() const {
  return Zorv::FormulaModel::DocTableIndex(0);
}

Zorv::DOM::Table const& OneTableDocument::getTable() const { return _table; }

std::string const& OneTableDocument::getSheetName() const { return _sheetName; }

Zorv::Formulas::TableContext const* OneTableDocument::getTableContext(
    Zorv::DOM::Table const&) const {
  return this;
}

Zorv::OfficeUtils::LocaleContext const& OneTableDocument::getLocaleContext() const {
  return _locale;
}

Zorv::DOM::TimeZone const& OneTableDocument::getTimeZone() const { return _timeZone; }

std::size_t OneTableDocument::getTableCount() const { return 1; }

Zorv::Formulas::TableContext const* OneTableDocument::findTableContext(
    std::string_view sheetName) const {
  return sheetName == _sheetName ? this : nullptr;
}

Zorv::DOM::FormulaSyntaxTree::Expr const* OneTableDocument::findDefinedName(
    std::string_view, Zorv::FormulaModel::DocTableIndex) const {
  return nullptr;
}

Zorv::Formulas::ListObject const* OneTableDocument::findListObject(std::string_view) const {
  return nullptr;
}

Zorv::Formulas::ListObject const* OneTableDocument::findListObjectAt(
    Zorv::FormulaModel::DocTableIndex, unsigned long, unsigned long) const {
  return nullptr;
}

Zorv::FormulaValue CellValues::getCellValue(Zorv::DOM::CellInfo const& cellInfo) const {
  auto const* cell = cellInfo.getCell();
  return cell ? cell->value : Zorv::FormulaValue();
}

Zorv::DOM::TimeZone const& CellValues::getTimeZone() const { return _document.getTimeZone(); }

Zorv::Formulas::ContextProvider const& CellValues::getFormulasContextProvider() const {
  return _document;
}
