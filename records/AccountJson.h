#pragma once

#include "OfficeUtils/LocaleContext.h"
#include "analysis/Explain/CellAccount.h"
#include "records/JsonBuilder.h"
#include "words/CellText.h"
#include "workbook/Document.h"

namespace Zorv::Records {

/// Writer of the accounts of a document's cells. Borrows its arguments. One thread at a time.
class AccountJson {
public:
  AccountJson(Workbook::Document const& document, OfficeUtils::LocaleContext const& locale) noexcept
      : _document(document), _formatter(locale) {}

  /// The members of an account, without braces.
  void write(Analysis::CellAccount const& account, JsonBuilder& json);

private:
  Workbook::Document const& _document;
  Words::CellFormatter _formatter;
};

}  // namespace Zorv::Records
