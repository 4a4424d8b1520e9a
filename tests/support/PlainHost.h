#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "DOM/Table.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/TableContext.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"

// A host of one table, with nothing recorded and nothing pretended: for tests and benchmarks that
// run the real engine without a workbook.
namespace Zorv::TestSupport {

class PlainTableContext final : public Formulas::TableContext {
public:
  explicit PlainTableContext(DOM::Table const& table) : _table(table) {}

  [[nodiscard]] FormulaModel::DocTableIndex getDocTableIndex() const override {
    return FormulaModel::DocTableIndex(0);
  }
  [[nodiscard]] DOM::Table const& getTable() const override { return _table; }
  [[nodiscard]] std::string const& getSheetName() const override { return _sheetName; }

private:
  DOM::Table const& _table;
  std::string _sheetName = "Sheet1";
};

class PlainContextProvider : public Formulas::ContextProvider {
public:
  explicit PlainContextProvider(DOM::Table const& table) : _tableContext(table) {}

  [[nodiscard]] Formulas::TableContext const* getTableContext(DOM::Table const&) const override {
    return &_tableContext;
  }
  [[nodiscard]] OfficeUtils::LocaleContext const& getLocaleContext() const override {
    return _locale;
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override { return _timeZone; }
  [[nodiscard]] std::size_t getTableCount() const override { return 1; }
  [[nodiscard]] Formulas::TableContext const* findTableContext(
      std::string_view name) const override {
    return name == _tableContext.getSheetName() ? &_tableContext : nullptr;
  }
  [[nodiscard]] Formulas::TableContext const* findTableContextAt(
      FormulaModel::DocTableIndex table) const override {
    return table.get() == 0 ? &_tableContext : nullptr;
  }
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view, FormulaModel::DocTableIndex) const override {
    return nullptr;
  }
  [[nodiscard]] Formulas::ListObject const* findListObject(std::string_view) const override {
    return nullptr;
  }
  [[nodiscard]] Formulas::ListObject const* findListObjectAt(FormulaModel::DocTableIndex,
                                                             unsigned long,
                                                             unsigned long) const override {
    return nullptr;
  }

private:
  PlainTableContext _tableContext;
  OfficeUtils::LocaleContext _locale;
  DOM::TimeZone _timeZone;
};

class PlainValueContextProvider final : public ConditionalFormatters::ValueContextProvider {
public:
  explicit PlainValueContextProvider(DOM::Table const& table) : _contextProvider(table) {}

  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override {
    auto const* const cell = cellInfo.getCell();
    return cell != nullptr ? cell->value : FormulaValue();
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override {
    return _contextProvider.getTimeZone();
  }
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override {
    return _contextProvider;
  }

private:
  PlainContextProvider _contextProvider;
};

}  // namespace Zorv::TestSupport
