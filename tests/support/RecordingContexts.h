#pragma once

#include <functional>
#include <string>

#include "DOM/Table.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/TableContext.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "support/Journal.h"

namespace Zorv::TestSupport {

/// A table context that notes "getDocTableIndex" in the journal.
class RecordingTableContext : public Formulas::TableContext {
public:
  RecordingTableContext(DOM::Table const& table, unsigned long docTableIndex, Journal& journal)
      : _table(table), _docTableIndex(docTableIndex), _journal(journal) {}

  [[nodiscard]] FormulaModel::DocTableIndex getDocTableIndex() const override;
  [[nodiscard]] DOM::Table const& getTable() const override { return _table; }
  [[nodiscard]] std::string const& getSheetName() const override { return _sheetName; }

private:
  DOM::Table const& _table;
  FormulaModel::DocTableIndex _docTableIndex;
  Journal& _journal;
  std::string _sheetName = "Sheet1";
};

/// The formula engine's access to a document of one table. Notes "getTableContext" and
/// "getLocaleContext" in the journal; what only the engine itself would ask is not noted.
class RecordingContextProvider : public Formulas::ContextProvider {
public:
  RecordingContextProvider(DOM::Table const& table, Journal& journal)
      : _tableContext(table, 7, journal), _journal(journal) {}

  void setLocaleContext(OfficeUtils::LocaleContext locale) { _locale = std::move(locale); }
  void setTimeZone(DOM::TimeZone timeZone) { _timeZone = std::move(timeZone); }
  /// Called each time that the locale is asked for, before it is given.
  void onGetLocaleContext(std::function<void()> hook) { _localeHook = std::move(hook); }
  [[nodiscard]] RecordingTableContext const& getContext() const noexcept { return _tableContext; }
  /// The locale, without a note in the journal.
  [[nodiscard]] OfficeUtils::LocaleContext const& peekLocaleContext() const noexcept {
    return _locale;
  }

  [[nodiscard]] Formulas::TableContext const* getTableContext(
      DOM::Table const& table) const override;
  [[nodiscard]] OfficeUtils::LocaleContext const& getLocaleContext() const override;
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override { return _timeZone; }

  [[nodiscard]] std::size_t getTableCount() const override { return 1; }
  [[nodiscard]] Formulas::TableContext const* findTableContext(std::string_view) const override {
    return nullptr;
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
  RecordingTableContext _tableContext;
  OfficeUtils::LocaleContext _locale;
  DOM::TimeZone _timeZone;
  std::function<void()> _localeHook;
  Journal& _journal;
};

}  // namespace Zorv::TestSupport
