#include "support/RecordingContexts.h"

namespace Zorv::TestSupport {

FormulaModel::DocTableIndex RecordingTableContext::getDocTableIndex() const {
  _journal.note("getDocTableIndex");
  return _docTableIndex;
}

Formulas::TableContext const* RecordingContextProvider::getTableContext(
    DOM::Table const& table) const {
  _journal.note(&table == &_tableContext.getTable() ? "getTableContext"
                                                    : "getTableContext of another table");
  return &_tableContext;
}

OfficeUtils::LocaleContext const& RecordingContextProvider::getLocaleContext() const {
  _journal.note("getLocaleContext");
  if (_localeHook) {
    _localeHook();
  }
  return _locale;
}

}  // namespace Zorv::TestSupport
