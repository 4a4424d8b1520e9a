#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tool/Input/Options.h"
#include "workbook/Document.h"

namespace Zorv::Tool {

/// The rules of one sheet, by number. Logarithmic in the number of rules.
[[nodiscard]] std::span<Workbook::Rule const> findRulesOfSheet(Workbook::Document const& document,
                                                               std::size_t sheet) noexcept;

/// The sheets, cells and rules of a document that the options select.
///
/// Borrows the document and the options.
class Selection {
public:
  /// Throws ContentError if the document has no sheet of the name in the options.
  Selection(Workbook::Document const& document, Options const& options);

  [[nodiscard]] Workbook::Document const& getDocument() const noexcept { return _document; }
  [[nodiscard]] Options const& getOptions() const noexcept { return _options; }
  /// Indices of the document's sheets, ascending.
  [[nodiscard]] std::vector<std::size_t> const& getSheets() const noexcept { return _sheets; }

  /// The rules of a sheet that intersect the range of the options, by priority. Rules without a
  /// priority come last; rules of equal priority keep the order of the file.
  [[nodiscard]] std::vector<Workbook::Rule const*> getRulesByPriority(std::size_t sheet) const;

  /// The rules of all selected sheets that intersect the range of the options, by number.
  [[nodiscard]] std::vector<Workbook::Rule const*> getRules() const;

  /// Those of a sheet's rules that intersect the range of the options and are resolved, by number.
  [[nodiscard]] std::vector<Workbook::Rule const*> getResolvedRules(std::size_t sheet) const;

private:
  [[nodiscard]] bool isSelected(Workbook::Rule const& rule) const noexcept;

  Workbook::Document const& _document;
  Options const& _options;
  std::vector<std::size_t> _sheets;
};

}  // namespace Zorv::Tool
