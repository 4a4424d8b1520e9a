#pragma once

#include <cstddef>
#include <memory>

#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/CellInfo.h"
#include "DOM/CellStyle.h"
#include "visuals/VisualResolver.h"
#include "workbook/Document.h"
#include "workbook/Export.h"
#include "workbook/SheetRules.h"

namespace Zorv::Workbook {

class DocumentResolver;

/// Resolver of the conditional formats of one sheet: the styles and the visuals that they give its
/// cells, and the rules that they were made from.
///
/// Made by DocumentResolver::prepare(). Conditions and thresholds are prepared when the first cell
/// needs them, and kept.
///
/// Lifetime: borrows the document and the DocumentResolver, which must outlive it. Good as long as
/// the document does not change: make a new one after a change.
/// Threads: all operations may run concurrently.
class ZORV_WORKBOOK_EXPORT SheetResolver {
public:
  SheetResolver(SheetResolver const&) = delete;
  SheetResolver& operator=(SheetResolver const&) = delete;
  SheetResolver(SheetResolver&& other) noexcept;
  SheetResolver& operator=(SheetResolver&& other) noexcept;
  ~SheetResolver();

  /// Styles, verdicts and explanations, for single cells and in passes over many.
  [[nodiscard]] ConditionalFormatters::TableResolver const& getTableResolver() const noexcept {
    return *_tableResolver;
  }
  /// Colour scales, data bars and icons; its passes tell the styles, too.
  [[nodiscard]] Visuals::VisualResolver const& getVisualResolver() const noexcept {
    return _visualResolver;
  }
  /// From the indices of formats, as both resolvers name them, to the rules of the file.
  [[nodiscard]] SheetRules const& getRules() const noexcept { return _rules; }

  /// The style that a position of the sheet shows: its own style (see findOwnStyle()), and over it
  /// that of its conditional formats. Throws what TableResolver::resolve() throws.
  [[nodiscard]] DOM::CellStyle findEffectiveStyle(DOM::CellInfo const& cell) const;

private:
  friend class DocumentResolver;
  SheetResolver(DocumentResolver const& resolver, std::size_t sheet);

  Document const* _document;
  std::size_t _sheet;
  SheetRules _rules;
  std::unique_ptr<ConditionalFormatters::TableResolver const> _tableResolver;  ///< does not move
  Visuals::VisualResolver _visualResolver;
};

}  // namespace Zorv::Workbook
