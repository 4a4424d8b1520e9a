#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "Utils/CellIndex.h"
#include "Utils/TableRange.h"
#include "tool/Input/Options.h"
#include "workbook/Document.h"

namespace Zorv::Tool {

/// The sheets, cells and rules of a document that the options select.
///
/// Sheets: those of `--sheet`; else, if every range names its sheet, those of the ranges; else all.
/// Borrows the document and the options.
class Selection {
public:
  /// `file` is the document's name in messages and outputs. Throws ContentError if the document has
  /// no sheet of a name in the options.
  Selection(Workbook::Document const& document, Options const& options, std::string file);

  [[nodiscard]] Workbook::Document const& getDocument() const noexcept { return _document; }
  [[nodiscard]] Options const& getOptions() const noexcept { return _options; }
  [[nodiscard]] std::string const& getFile() const noexcept { return _file; }
  /// Indices of the document's sheets, ascending.
  [[nodiscard]] std::vector<std::size_t> const& getSheets() const noexcept { return _sheets; }

  /// The selected ranges of a sheet, in the order of the options; none if it is not selected.
  [[nodiscard]] std::vector<TableRange> getRanges(std::size_t sheet) const;

  /// True for a position in the selected ranges of a selected sheet.
  [[nodiscard]] bool contains(std::size_t sheet, CellIndex cell) const noexcept;

  /// True for a rule that intersects the selected ranges of its sheet, and for one whose ranges
  /// cannot be read.
  [[nodiscard]] bool contains(Workbook::Rule const& rule) const noexcept;

  /// The rules of a sheet that intersect its selected ranges, by priority. Rules without a
  /// priority come last; rules of equal priority keep the order of the file.
  [[nodiscard]] std::vector<Workbook::Rule const*> getRulesByPriority(std::size_t sheet) const;

  /// The rules of all selected sheets that intersect their selected ranges, by number.
  [[nodiscard]] std::vector<Workbook::Rule const*> getRules() const;

  /// Those of a sheet's rules that intersect its selected ranges and are resolved, by number.
  [[nodiscard]] std::vector<Workbook::Rule const*> getResolvedRules(std::size_t sheet) const;

private:
  struct SelectedRange {
    std::optional<std::size_t> sheet;  ///< nothing: each selected sheet
    TableRange range;

    [[nodiscard]] bool isOn(std::size_t index) const noexcept { return !sheet || *sheet == index; }
  };

  Workbook::Document const& _document;
  Options const& _options;
  std::string _file;
  std::vector<SelectedRange> _ranges;  ///< none: all cells
  std::vector<std::size_t> _sheets;
};

}  // namespace Zorv::Tool
