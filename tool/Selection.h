#pragma once

#include <cstddef>
#include <vector>

#include "tool/Options.h"
#include "workbook/Document.h"

namespace Zorv::Tool {

/// What a command looks at: the sheets and cells of a document that the options name.
///
/// Borrows the document and the options.
class Selection {
public:
  /// Throws ContentError where the document has no sheet of the name that the options give.
  Selection(Workbook::Document const& document, Options const& options);

  [[nodiscard]] Workbook::Document const& getDocument() const noexcept { return _document; }
  [[nodiscard]] Options const& getOptions() const noexcept { return _options; }
  /// Indices of the document's sheets, ascending.
  [[nodiscard]] std::vector<std::size_t> const& getSheets() const noexcept { return _sheets; }

  /// The part of a sheet that is looked at: the smallest range with all its cells, with so many
  /// rows and columns behind them, cut to the range that the options name.
  [[nodiscard]] TableRange getBounds(std::size_t sheet, unsigned long margin = 0) const noexcept;

  /// The rules of a sheet by priority, those without one last, equal ones in the file's order;
  /// those that do not touch the range that the options name are left out.
  [[nodiscard]] std::vector<Workbook::Rule const*> getRulesByPriority(std::size_t sheet) const;

  /// The rules of all sheets that are looked at, by number.
  [[nodiscard]] std::vector<Workbook::Rule const*> getRules() const;

private:
  [[nodiscard]] bool isSelected(Workbook::Rule const& rule) const noexcept;

  Workbook::Document const& _document;
  Options const& _options;
  std::vector<std::size_t> _sheets;
};

}  // namespace Zorv::Tool
