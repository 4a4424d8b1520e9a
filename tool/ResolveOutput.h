#pragma once

#include <iosfwd>
#include <memory>
#include <vector>

#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "OfficeUtils/LocaleContext.h"
#include "tool/Selection.h"

namespace Zorv::Tool {

/// A cell that conditional formats style.
struct ResolvedCell {
  DOM::CellInfo cellInfo;
  DOM::SharedCellStylePtr style;                ///< never null
  std::vector<Workbook::Rule const*> deciding;  ///< by priority, at least one
};

/// Prints what `cndfrmt resolve` finds, in the order in which it is handed over.
class ResolveOutput {
public:
  ResolveOutput() = default;
  ResolveOutput(ResolveOutput const&) = delete;
  ResolveOutput& operator=(ResolveOutput const&) = delete;
  virtual ~ResolveOutput() = default;

  /// The cells that follow are of this sheet.
  virtual void beginSheet(Workbook::Sheet const& sheet) = 0;
  virtual void add(ResolvedCell const& cell) = 0;
  /// To be called once, at the end.
  virtual void finish() = 0;
};

/// Both borrow their arguments.
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveTable(
    OfficeUtils::LocaleContext const& locale, std::ostream& out);
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveJson(Selection const& selection,
                                                             std::ostream& out);

}  // namespace Zorv::Tool
