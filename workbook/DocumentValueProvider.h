#pragma once

#include <string>

#include "ConditionalFormatters/CndFrmt_ValueContextProvider.h"
#include "workbook/Document.h"
#include "workbook/DocumentContextProvider.h"
#include "workbook/Export.h"

namespace Zorv::Workbook {

/// The calculator's access to a loaded document: the values that its cells hold.
///
/// Ownership: borrows the document, which must outlive it and stay unchanged. Threads: all
/// operations may run concurrently.
class ZORV_WORKBOOK_EXPORT DocumentValueProvider final
    : public ConditionalFormatters::ValueContextProvider {
public:
  /// See DocumentContextProvider.
  DocumentValueProvider(Document const& document, std::string const& localeName,
                        DOM::TimeZone timeZone);
  ~DocumentValueProvider() override;
  DocumentValueProvider(DocumentValueProvider const&) = delete;
  DocumentValueProvider& operator=(DocumentValueProvider const&) = delete;

  /// The cell's value; the empty value for a position without a cell.
  [[nodiscard]] FormulaValue getCellValue(DOM::CellInfo const& cellInfo) const override;
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override;
  [[nodiscard]] Formulas::ContextProvider const& getFormulasContextProvider() const override;

private:
  DocumentContextProvider _contextProvider;
};

}  // namespace Zorv::Workbook
