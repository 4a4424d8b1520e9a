#include "Formulas/OneTableDocument.h"

#include <utility>

#include "Utils/CaseFolding.h"
#include "Utils/Exceptions.h"

namespace Zorv::Formulas {

namespace {

constexpr FormulaModel::DocTableIndex onlyIndex(0);

}  // namespace

FormulaModel::DocTableIndex OneTableDocument::OnlyTable::getDocTableIndex() const {
  return onlyIndex;
}

OneTableDocument::OneTableDocument(DOM::Table const& table, OneTableSettings settings)
    : _settings(std::move(settings)), _onlyTable(table, _settings.sheetName) {}

OneTableDocument::~OneTableDocument() = default;

TableContext const* OneTableDocument::getTableContext(DOM::Table const& table) const {
  if (&table != &_onlyTable.getTable()) {
    throw BaseRuntimeError("the table belongs to another document");
  }
  return &_onlyTable;
}

OfficeUtils::LocaleContext const& OneTableDocument::getLocaleContext() const {
  return _settings.locale;
}

DOM::TimeZone const& OneTableDocument::getTimeZone() const { return _settings.timeZone; }

std::size_t OneTableDocument::getTableCount() const { return 1; }

TableContext const* OneTableDocument::findTableContext(std::string_view sheetName) const {
  return foldCase(sheetName) == foldCase(_settings.sheetName) ? &_onlyTable : nullptr;
}

TableContext const* OneTableDocument::findTableContextAt(FormulaModel::DocTableIndex table) const {
  return table == onlyIndex ? &_onlyTable : nullptr;
}

DOM::FormulaSyntaxTree::Expr const* OneTableDocument::findDefinedName(
    std::string_view /*name*/, FormulaModel::DocTableIndex /*table*/) const {
  return nullptr;
}

ListObject const* OneTableDocument::findListObject(std::string_view /*name*/) const {
  return nullptr;
}

ListObject const* OneTableDocument::findListObjectAt(FormulaModel::DocTableIndex /*table*/,
                                                     unsigned long /*row*/,
                                                     unsigned long /*column*/) const {
  return nullptr;
}

}  // namespace Zorv::Formulas
