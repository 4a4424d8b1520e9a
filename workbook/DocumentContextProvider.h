#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "Formulas/ContextProvider.h"
#include "workbook/Document.h"
#include "workbook/Export.h"

namespace Zorv::Workbook {

/// The formula engine's access to a loaded document.
///
/// Besides the sheets it gives access to the external sheets by their names. Their DocTableIndex
/// follows those of the sheets; they are not counted.
///
/// Ownership: borrows the document, which must outlive it and stay unchanged. Threads: all
/// operations may run concurrently.
class ZORV_WORKBOOK_EXPORT DocumentContextProvider final : public Formulas::ContextProvider {
public:
  /// `localeName` is a BCP 47 tag or an ICU name; the date system is the document's.
  /// Throws BaseRuntimeError for an unknown locale.
  DocumentContextProvider(Document const& document, std::string const& localeName,
                          DOM::TimeZone timeZone);
  ~DocumentContextProvider() override;
  DocumentContextProvider(DocumentContextProvider const&) = delete;
  DocumentContextProvider& operator=(DocumentContextProvider const&) = delete;

  /// Throws BaseRuntimeError for a table of another document.
  [[nodiscard]] Formulas::TableContext const* getTableContext(
      DOM::Table const& table) const override;
  [[nodiscard]] OfficeUtils::LocaleContext const& getLocaleContext() const override;
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override;
  [[nodiscard]] std::size_t getTableCount() const override;
  [[nodiscard]] Formulas::TableContext const* findTableContext(
      std::string_view sheetName) const override;
  [[nodiscard]] Formulas::TableContext const* findTableContextAt(
      FormulaModel::DocTableIndex table) const override;
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, FormulaModel::DocTableIndex table) const override;
  [[nodiscard]] Formulas::ListObject const* findListObject(std::string_view name) const override;
  [[nodiscard]] Formulas::ListObject const* findListObjectAt(FormulaModel::DocTableIndex table,
                                                             unsigned long row,
                                                             unsigned long column) const override;

private:
  using ByFoldedName = std::unordered_map<std::string, std::size_t>;

  void addTable(std::string const& name, DOM::Table const& table);

  Document const& _document;
  OfficeUtils::LocaleContext _locale;
  DOM::TimeZone _timeZone;
  std::vector<std::unique_ptr<Formulas::TableContext>> _tableContexts;
  std::unordered_map<DOM::Table const*, std::size_t> _sheetsByTable;
  ByFoldedName _sheetsByName;  ///< indices of table contexts, external sheets included
  ByFoldedName _namesOfAllSheets;
  std::vector<ByFoldedName> _namesOfSheet;
  ByFoldedName _listObjectsByName;
  std::vector<std::vector<std::size_t>> _listObjectsOfSheet;  ///< indices by sheet
};

}  // namespace Zorv::Workbook
