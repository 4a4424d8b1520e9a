#pragma once

#include <cstddef>
#include <string_view>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Table.h"
#include "FormulaModel/DocTableIndex.h"
#include "Formulas/ListObject.h"
#include "Formulas/TableContext.h"
#include "OfficeUtils/LocaleContext.h"
#include "OfficeUtils/TimeZone.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The engine's access to a document.
///
/// Names of sheets, of defined names and of list objects are compared without regard to case.
/// Threads: the operations may be called from several threads at once while the document stays
/// unchanged.
class ZORV_HOST_EXPORT ContextProvider {
public:
  ContextProvider() = default;
  ContextProvider(ContextProvider const&) = delete;
  ContextProvider& operator=(ContextProvider const&) = delete;
  virtual ~ContextProvider();

  /// The view of a table of the document; never null, valid for one evaluation at least.
  [[nodiscard]] virtual TableContext const* getTableContext(DOM::Table const& table) const = 0;
  /// Valid for the life of the provider.
  [[nodiscard]] virtual OfficeUtils::LocaleContext const& getLocaleContext() const = 0;
  /// The zone in which formulas read the clock. Valid for the life of the provider.
  [[nodiscard]] virtual DOM::TimeZone const& getTimeZone() const = 0;

  /// How many tables the document has.
  [[nodiscard]] virtual std::size_t getTableCount() const = 0;
  /// The view of the sheet of that name, or null.
  [[nodiscard]] virtual TableContext const* findTableContext(std::string_view sheetName) const = 0;
  /// The view of the table at a place of the document, or null. Unless overridden, always null.
  [[nodiscard]] virtual TableContext const* findTableContextAt(
      FormulaModel::DocTableIndex table) const;
  /// The expression of a defined name, or null: a name of the given table before one of the whole
  /// document. Relative references in it are written as seen from the cell in row 0, column 0.
  [[nodiscard]] virtual DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, FormulaModel::DocTableIndex table) const = 0;
  /// The list object (a "table" in the formulas' sense, ISO/IEC 29500-1, 18.5) of that name, or
  /// null.
  [[nodiscard]] virtual ListObject const* findListObject(std::string_view name) const = 0;
  /// The list object that holds a position, or null.
  [[nodiscard]] virtual ListObject const* findListObjectAt(FormulaModel::DocTableIndex table,
                                                           unsigned long row,
                                                           unsigned long column) const = 0;
};

}  // namespace Zorv::Formulas
