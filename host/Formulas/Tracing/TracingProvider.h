#pragma once

#include "Formulas/ContextProvider.h"
#include "Formulas/Tracing/TraceWriter.h"

namespace Zorv::Formulas {

/// A document whose defined names are observed by a trace. Borrows both.
class TracingProvider final : public ContextProvider {
public:
  TracingProvider(ContextProvider const& document, TraceWriter& writer) noexcept
      : _document(document), _writer(writer) {}

  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, FormulaModel::DocTableIndex table) const override {
    auto const* const formula = _document.findDefinedName(name, table);
    auto const* const observed =
        formula != nullptr ? _writer.findObserved(name, *formula) : nullptr;
    return observed != nullptr ? observed : formula;
  }

  [[nodiscard]] TableContext const* getTableContext(DOM::Table const& table) const override {
    return _document.getTableContext(table);
  }
  [[nodiscard]] OfficeUtils::LocaleContext const& getLocaleContext() const override {
    return _document.getLocaleContext();
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override {
    return _document.getTimeZone();
  }
  [[nodiscard]] std::size_t getTableCount() const override { return _document.getTableCount(); }
  [[nodiscard]] TableContext const* findTableContext(std::string_view sheetName) const override {
    return _document.findTableContext(sheetName);
  }
  [[nodiscard]] TableContext const* findTableContextAt(
      FormulaModel::DocTableIndex table) const override {
    return _document.findTableContextAt(table);
  }
  [[nodiscard]] ListObject const* findListObject(std::string_view name) const override {
    return _document.findListObject(name);
  }
  [[nodiscard]] ListObject const* findListObjectAt(FormulaModel::DocTableIndex table,
                                                   unsigned long row,
                                                   unsigned long column) const override {
    return _document.findListObjectAt(table, row, column);
  }

private:
  ContextProvider const& _document;
  TraceWriter& _writer;
};

}  // namespace Zorv::Formulas
