#include "workbook/SheetResolver.h"

#include "workbook/DocumentResolver.h"
#include "workbook/OwnStyle.h"

namespace Zorv::Workbook {

namespace {

ConditionalFormatters::ConditionalFormatRefs const& findFormats(DocumentResolver const& resolver,
                                                                std::size_t sheet) {
  return resolver.getCalculator().getConditionalFormatRefs(
      *resolver.getDocument().getSheets()[sheet].table);
}

}  // namespace

SheetResolver::SheetResolver(DocumentResolver const& resolver, std::size_t sheet)
    : _document(&resolver.getDocument()),
      _sheet(sheet),
      _rules(*_document, sheet, findFormats(resolver, sheet)),
      _tableResolver(std::make_unique<ConditionalFormatters::TableResolver const>(
          resolver.getCalculator().prepare(_document->getStyles(),
                                           *_document->getSheets()[sheet].table))),
      _visualResolver({.table = *_document->getSheets()[sheet].table,
                       .formats = _document->getSheets()[sheet].visualFormats,
                       .provider = resolver.getValueProvider(),
                       .conditionalFormats = findFormats(resolver, sheet),
                       .resolver = *_tableResolver,
                       .styles = _document->getStyles()}) {}

SheetResolver::SheetResolver(SheetResolver&& other) noexcept = default;
SheetResolver& SheetResolver::operator=(SheetResolver&& other) noexcept = default;
SheetResolver::~SheetResolver() = default;

DOM::CellStyle SheetResolver::findEffectiveStyle(DOM::CellInfo const& cell) const {
  DOM::CellStyle style = findOwnStyle(*_document, _sheet, cell);
  if (auto const conditional = _tableResolver->resolve(cell)) {
    override(style, conditional->get());
  }
  return style;
}

}  // namespace Zorv::Workbook
