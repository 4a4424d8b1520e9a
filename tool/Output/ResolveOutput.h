#pragma once

#include <iosfwd>
#include <memory>
#include <vector>

#include "DOM/CellInfo.h"
#include "DOM/SharedStyle.h"
#include "OfficeUtils/LocaleContext.h"
#include "tool/Input/Selection.h"

namespace Zorv::Tool {

/// A cell with a conditional style.
struct ResolvedCell {
  DOM::CellInfo cellInfo;
  DOM::SharedCellStylePtr style;                ///< never null
  std::vector<Workbook::Rule const*> deciding;  ///< by priority, at least one
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
  /// Ends the output. Must be called once.
  virtual void finish() = 0;
};

/// The outputs borrow their arguments.
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveTable(
    OfficeUtils::LocaleContext const& locale, std::ostream& out);
[[nodiscard]] std::unique_ptr<ResolveOutput> makeResolveJson(Selection const& selection,
                                                             std::ostream& out);

}  // namespace Zorv::Tool
