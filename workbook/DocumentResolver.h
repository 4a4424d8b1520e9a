#pragma once

#include <cstddef>
#include <memory>
#include <string>

#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "OfficeUtils/TimeZone.h"
#include "workbook/Document.h"
#include "workbook/DocumentValueProvider.h"
#include "workbook/Export.h"
#include "workbook/SheetResolver.h"

namespace Zorv::Workbook {

/// Resolver of the conditional formats of a loaded document.
///
/// Ownership: borrows the document, which must outlive it and stay unchanged.
/// Threads: all operations may run concurrently.
class ZORV_WORKBOOK_EXPORT DocumentResolver {
public:
  /// The locale (a BCP 47 tag or an ICU name) and the time zone are those in which formulas are
  /// evaluated. Throws BaseRuntimeError for an unknown locale.
  explicit DocumentResolver(Document const& document, std::string const& localeName = "en-US",
                            DOM::TimeZone const& timeZone = DOM::TimeZone());
  DocumentResolver(DocumentResolver const&) = delete;
  DocumentResolver& operator=(DocumentResolver const&) = delete;
  ~DocumentResolver();

  /// The resolver of the sheet of that index, which must be one of the document. Cost: linear in
  /// the sheet's rules; evaluates nothing.
  [[nodiscard]] SheetResolver prepare(std::size_t sheet) const;

  /// The document that it borrows.
  [[nodiscard]] Document const& getDocument() const noexcept { return _document; }
  /// The calculator for all tables of the document.
  [[nodiscard]] ConditionalFormatters::ConditionalFormattingPropsCalculator const& getCalculator()
      const noexcept {
    return _calculator;
  }
  /// Values of the cells, and the formula engine's access to the document.
  [[nodiscard]] ConditionalFormatters::ValueContextProvider const& getValueProvider()
      const noexcept {
    return _values;
  }

private:
  DocumentResolver(Document const& document, std::unique_ptr<DocumentValueProvider> values);

  Document const& _document;
  DocumentValueProvider const& _values;  ///< owned by the calculator
  ConditionalFormatters::ConditionalFormattingPropsCalculator _calculator;
};

}  // namespace Zorv::Workbook
