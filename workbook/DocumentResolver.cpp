#include "workbook/DocumentResolver.h"

#include <utility>

namespace Zorv::Workbook {

DocumentResolver::DocumentResolver(Document const& document, std::string const& localeName,
                                   DOM::TimeZone const& timeZone)
    : DocumentResolver(document,
                       std::make_unique<DocumentValueProvider>(document, localeName, timeZone)) {}

DocumentResolver::DocumentResolver(Document const& document,
                                   std::unique_ptr<DocumentValueProvider> values)
    : _document(document), _values(*values), _calculator(std::move(values)) {}

DocumentResolver::~DocumentResolver() = default;

SheetResolver DocumentResolver::prepare(std::size_t sheet) const { return {*this, sheet}; }

}  // namespace Zorv::Workbook
