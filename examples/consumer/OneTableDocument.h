#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

#include <ConditionalFormatters/CndFrmt_ValueContextProvider.h>
#include <DOM/Table.h>
#include <Formulas/ContextProvider.h>
#include <Formulas/TableContext.h>
#include <OfficeUtils/LocaleContext.h>
#include <OfficeUtils/TimeZone.h>

/// The formula engine's access to a document of one table, without names and list objects.
///
/// Borrows the table, which must outlive it.
class OneTableDocument final : public Zorv::Formulas::ContextProvider,
                               public Zorv::Formulas::TableContext {
public:
  OneTableDocument(Zorv::DOM::Table const& table, std::string sheetName);

  Zorv::FormulaModel::DocTableIndex getDocTableIndex() const override;
  Zorv::DOM::Table const& getTable() const override;
  std::string const& getSheetName() const override;

  Zorv::Formulas::TableContext const* getTableContext(Zorv::DOM::Table const& table) const override;
  Zorv::OfficeUtils::LocaleContext const& getLocaleContext() const override;
  Zorv::DOM::TimeZone const& getTimeZone() const override;
  std::size_t getTableCount() const override;
  Zorv::Formulas::TableContext const* findTableContext(std::string_view sheetName) const override;
  Zorv::DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, Zorv::FormulaModel::DocTableIndex table) const override;
  Zorv::Formulas::ListObject const* findListObject(std::string_view name) const override;
  Zorv::Formulas::ListObject const* findListObjectAt(Zorv::FormulaModel::DocTableIndex table,
                                                     unsigned long row,
                                                     unsigned long column) const override;

private:
  Zorv::DOM::Table const& _table;
  std::string _sheetName;
  Zorv::OfficeUtils::LocaleContext _locale;
  Zorv::DOM::TimeZone _timeZone;
};

/// Hands the library the values that the table's cells hold. Borrows the document.
class CellValues final : public Zorv::ConditionalFormatters::ValueContextProvider {
public:
  explicit CellValues(OneTableDocument const& document) : _document(document) {}

  Zorv::FormulaValue getCellValue(Zorv::DOM::CellInfo const& cellInfo) const override;
  Zorv::DOM::TimeZone const& getTimeZone() const override;
  Zorv::Formulas::ContextProvider const& getFormulasContextProvider() const override;

private:
  OneTableDocument const& _document;
};
