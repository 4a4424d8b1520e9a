#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "OfficeUtils/TimeZone.h"
#include "Utils/CellIndex.h"
#include "Utils/WorkBudget.h"
#include "words/AccountText.h"
#include "workbook/Document.h"

namespace Zorv::Render {

/// Source of the accounts that a page tells: why cells look as they do.
class PageAccounts {
public:
  PageAccounts() = default;
  PageAccounts(PageAccounts const&) = delete;
  PageAccounts& operator=(PageAccounts const&) = delete;
  virtual ~PageAccounts() = default;

  /// The account of a position of a sheet of the document.
  [[nodiscard]] virtual Words::AccountText explain(std::size_t sheet, CellIndex cell) = 0;
};

/// The accounts of a document's cells. Borrows the document and the budget, which may be null.
/// Throws BaseRuntimeError for an unknown locale; explain() throws what the budget throws.
[[nodiscard]] std::unique_ptr<PageAccounts> makePageAccounts(Workbook::Document const& document,
                                                             std::string const& localeName,
                                                             DOM::TimeZone const& timeZone,
                                                             WorkBudget* budget);

}  // namespace Zorv::Render
