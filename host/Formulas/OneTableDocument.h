#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "Formulas/ContextProvider.h"
#include "Formulas/TableContext.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// Settings of a OneTableDocument; each has a default.
struct OneTableSettings {
  std::string sheetName = "Sheet1";        ///< the name by which formulas refer to the table
  OfficeUtils::LocaleContext locale = {};  ///< of casts, dates and texts of numbers
  DOM::TimeZone timeZone = {};             ///< in which the clock is read
};

/// Formula engine's access to a document of one table, without defined names and list objects.
///
/// For programs that have a table and no document around it. A derived class may override
/// findDefinedName() and the like to offer more.
/// Ownership: borrows the table, which must outlive this object. Threads: all operations may run
/// concurrently while the table stays unchanged.
class ZORV_HOST_EXPORT OneTableDocument : public ContextProvider {
public:
  /// Borrows the table.
  explicit OneTableDocument(DOM::Table const& table, OneTableSettings settings = {});
  ~OneTableDocument() override;

  /// Throws BaseRuntimeError for any other table than the document's.
  [[nodiscard]] TableContext const* getTableContext(DOM::Table const& table) const override;
  [[nodiscard]] OfficeUtils::LocaleContext const& getLocaleContext() const override;
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override;
  [[nodiscard]] std::size_t getTableCount() const override;
  [[nodiscard]] TableContext const* findTableContext(std::string_view sheetName) const override;
  [[nodiscard]] TableContext const* findTableContextAt(
      FormulaModel::DocTableIndex table) const override;
  /// Always null, as are the list objects.
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, FormulaModel::DocTableIndex table) const override;
  [[nodiscard]] ListObject const* findListObject(std::string_view name) const override;
  [[nodiscard]] ListObject const* findListObjectAt(FormulaModel::DocTableIndex table,
                                                   unsigned long row,
                                                   unsigned long column) const override;

private:
  /// The table as the only one of its document, at index 0.
  class OnlyTable final : public TableContext {
  public:
    OnlyTable(DOM::Table const& table, std::string const& sheetName) noexcept
        : _table(table), _sheetName(sheetName) {}

    [[nodiscard]] FormulaModel::DocTableIndex getDocTableIndex() const override;
    [[nodiscard]] DOM::Table const& getTable() const override { return _table; }
    [[nodiscard]] std::string const& getSheetName() const override { return _sheetName; }

  private:
    DOM::Table const& _table;
    std::string const& _sheetName;
  };

  OneTableSettings const _settings;
  OnlyTable const _onlyTable;
};

}  // namespace Zorv::Formulas
