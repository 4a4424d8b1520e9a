#pragma once

#include <string>

#include "DOM/Table.h"
#include "FormulaModel/DocTableIndex.h"
#include "Utils/Export.h"

namespace Zorv::Formulas {

/// The engine's view of one table of a document.
///
/// Threads: the operations may be called from several threads at once while the document stays
/// unchanged.
class ZORV_HOST_EXPORT TableContext {
public:
  TableContext() = default;
  TableContext(TableContext const&) = delete;
  TableContext& operator=(TableContext const&) = delete;
  virtual ~TableContext();

  /// The place of the table in the document.
  [[nodiscard]] virtual FormulaModel::DocTableIndex getDocTableIndex() const = 0;
  /// The table itself; the engine reads its cells in place.
  [[nodiscard]] virtual DOM::Table const& getTable() const = 0;
  /// The name by which formulas refer to the table's sheet.
  [[nodiscard]] virtual std::string const& getSheetName() const = 0;
};

}  // namespace Zorv::Formulas
