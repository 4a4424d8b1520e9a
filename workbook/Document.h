#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/SharedStyle.h"
#include "DOM/Styles.h"
#include "Formulas/ListObject.h"
#include "OfficeUtils/LocaleContext.h"
#include "workbook/Export.h"
#include "workbook/Finding.h"
#include "workbook/Rule.h"
#include "workbook/Sheet.h"

namespace Zorv::Workbook {

/// A name that stands for a formula (ISO/IEC 29500-1, 18.2.5).
struct DefinedName {
  std::string name;                  ///< as formulas write it
  std::optional<std::size_t> sheet;  ///< index of the only sheet that sees it; nothing: all sheets
  std::string formulaText;           ///< as written
  /// Parsed formula, with references relative to row 0, column 0; nothing if the text cannot be
  /// parsed.
  std::optional<DOM::FormulaSyntaxTree::Expr> expr;
};

/// A sheet of another workbook, of which the file keeps some cells. It is no sheet of the document.
struct ExternalSheet {
  std::string name;                   ///< as formulas write it: `[1]Sheet1`
  std::unique_ptr<DOM::Table> table;  ///< never null
};

/// A workbook in memory.
///
/// Sheets are in the workbook's order; a sheet's index is its table's DocTableIndex. Moving a
/// document does not move its tables, formats and styles in memory.
/// Threads: const members may run concurrently.
class ZORV_WORKBOOK_EXPORT Document {
public:
  /// The sheets in the workbook's order.
  [[nodiscard]] std::vector<Sheet> const& getSheets() const noexcept { return _sheets; }
  /// The same, to be changed.
  [[nodiscard]] std::vector<Sheet>& getSheets() noexcept { return _sheets; }

  /// Sheets of other workbooks, of which the file keeps cells.
  [[nodiscard]] std::vector<ExternalSheet> const& getExternalSheets() const noexcept {
    return _externalSheets;
  }
  /// The same, to be changed.
  [[nodiscard]] std::vector<ExternalSheet>& getExternalSheets() noexcept { return _externalSheets; }

  /// Index of the sheet of that name, ignoring letter case; nothing if there is none.
  [[nodiscard]] std::optional<std::size_t> findSheet(std::string const& name) const;

  /// The named styles that the conditional formats refer to: one for each differential format.
  [[nodiscard]] DOM::Styles const& getStyles() const noexcept { return _styles; }
  /// The same, to be changed.
  [[nodiscard]] DOM::Styles& getStyles() noexcept { return _styles; }

  /// Interns the cells' own styles.
  [[nodiscard]] DOM::SharedObjectFactory const& getCellStyleFactory() const noexcept {
    return *_cellStyleFactory;
  }
  /// The style of cells without a style of their own; may be null.
  [[nodiscard]] DOM::SharedCellStylePtr const& getDefaultCellStyle() const noexcept {
    return _defaultCellStyle;
  }
  /// Replaces the style of cells without a style of their own.
  void setDefaultCellStyle(DOM::SharedCellStylePtr style) noexcept {
    _defaultCellStyle = std::move(style);
  }

  /// The indexed colours that number formats name, `[Color1]` first (ISO/IEC 29500-1, 18.8.27).
  [[nodiscard]] std::vector<DOM::Colour> const& getPalette() const noexcept { return _palette; }
  /// Replaces the indexed colours.
  void setPalette(std::vector<DOM::Colour> palette) noexcept { _palette = std::move(palette); }

  /// The date system of the workbook's serial numbers.
  [[nodiscard]] OfficeUtils::DateSystem getDateSystem() const noexcept { return _dateSystem; }
  /// Replaces the date system.
  void setDateSystem(OfficeUtils::DateSystem dateSystem) noexcept { _dateSystem = dateSystem; }

  /// The names that stand for formulas.
  [[nodiscard]] std::vector<DefinedName> const& getDefinedNames() const noexcept {
    return _definedNames;
  }
  /// The same, to be changed.
  [[nodiscard]] std::vector<DefinedName>& getDefinedNames() noexcept { return _definedNames; }

  /// The list objects of all sheets.
  [[nodiscard]] std::vector<Formulas::ListObject> const& getListObjects() const noexcept {
    return _listObjects;
  }
  /// The same, to be changed.
  [[nodiscard]] std::vector<Formulas::ListObject>& getListObjects() noexcept {
    return _listObjects;
  }

  /// Indices of the differential formats that nothing in the file refers to, ascending. None, too,
  /// if the file has parts that may refer to them and are not read.
  [[nodiscard]] std::vector<std::size_t> const& getUnusedFormats() const noexcept {
    return _unusedFormats;
  }
  /// Replaces the indices of unused formats.
  void setUnusedFormats(std::vector<std::size_t> formats) noexcept {
    _unusedFormats = std::move(formats);
  }

  /// Every rule of the file, by ascending number. The numbers may have gaps; see Rule.
  [[nodiscard]] std::vector<Rule> const& getRules() const noexcept { return _rules; }
  /// The same, to be changed.
  [[nodiscard]] std::vector<Rule>& getRules() noexcept { return _rules; }
  /// The rule of that number, or null. Costs a binary search.
  [[nodiscard]] Rule const* findRule(std::size_t number) const noexcept;
  /// The rules of one sheet, by ascending number. Costs a binary search.
  [[nodiscard]] std::span<Rule const> getRulesOfSheet(std::size_t sheet) const noexcept;

  /// Findings about what was read in another way than the file means it, in the order of reading.
  /// Rules that are not resolved are not repeated here.
  [[nodiscard]] std::vector<Finding> const& getFindings() const noexcept { return _findings; }
  /// Adds a finding, its long texts cut. After the first thousand, one says that the others are
  /// left out.
  void addFinding(Finding finding);

private:
  std::vector<Sheet> _sheets;
  std::vector<ExternalSheet> _externalSheets;
  DOM::Styles _styles;
  std::unique_ptr<DOM::SharedObjectFactory> _cellStyleFactory =
      std::make_unique<DOM::SharedObjectFactory>();
  DOM::SharedCellStylePtr _defaultCellStyle;
  std::vector<DOM::Colour> _palette;
  OfficeUtils::DateSystem _dateSystem = OfficeUtils::DateSystem::Since1900;
  std::vector<DefinedName> _definedNames;
  std::vector<Formulas::ListObject> _listObjects;
  std::vector<std::size_t> _unusedFormats;
  std::vector<Rule> _rules;
  std::vector<Finding> _findings;
};

}  // namespace Zorv::Workbook
