#pragma once

#include <memory>
#include <span>

#include "DOM/CellInfo.h"
#include "DOM/CellStyle.h"
#include "DOM/SharedStyle.h"
#include "OfficeUtils/LocaleContext.h"
#include "tool/Input/Selection.h"
#include "tool/Output/Report.h"
#include "tool/Text/OutputBuffer.h"
#include "tool/Text/Terminal.h"
#include "visuals/CellVisuals.h"
#include "workbook/Rule.h"
#include "workbook/SheetRules.h"

namespace Zorv::Tool {

/// A cell for which a rule decides. Borrows everything: good for the duration of a call.
struct ResolvedCell {
  DOM::CellInfo const& cellInfo;
  DOM::SharedCellStylePtr const& style;             ///< null if only visual rules decide
  std::span<Workbook::Rule const* const> deciding;  ///< by priority, at least one
  Visuals::CellVisuals const& visuals;
  Workbook::VisualRules visualRules;

  /// The style; an empty one if there is none.
  [[nodiscard]] DOM::CellStyle const& getStyle() const noexcept {
    static DOM::CellStyle const empty;
    return style ? style->get() : empty;
  }
};

/// Printer of resolved cells, in the order in which they are added.
class ResolveOutput {
public:
  ResolveOutput() = default;
  ResolveOutput(ResolveOutput const&) = delete;
  ResolveOutput& operator=(ResolveOutput const&) = delete;
  virtual ~ResolveOutput() = default;

  /// Starts a sheet: the next cells are in it.
  virtual void beginSheet(Workbook::Sheet const& sheet) = 0;
  virtual void add(ResolvedCell const& cell) = 0;
  /// Ends the output, also where the work ended early. Must be called once.
  virtual void finish() = 0;
};

/// The outputs borrow their arguments.
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveTable(
    OfficeUtils::LocaleContext const& locale, Terminal const& terminal, OutputBuffer& out);
/// The summary comes from the report, as it stands when the output ends.
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveJson(
    Selection const& selection, OfficeUtils::LocaleContext const& locale, Report const& report,
    OutputBuffer& out);

/// Separated values; the line of headings stands before the first file alone.
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveFields(
    Selection const& selection, OfficeUtils::LocaleContext const& locale, bool isFirstFile,
    OutputBuffer& out);
/// One JSON object a line.
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveJsonLines(
    Selection const& selection, OfficeUtils::LocaleContext const& locale, OutputBuffer& out);

}  // namespace Zorv::Tool
