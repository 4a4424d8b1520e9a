#pragma once

#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "DOM/Table.h"
#include "Formulas/CalcExpr.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/ListObject.h"
#include "Formulas/TableContext.h"

namespace Zorv::Formulas {

/// A sheet of a FormulaDocument.
class FormulaSheet final : public TableContext {
public:
  FormulaSheet(std::string name, unsigned long index) : _name(std::move(name)), _index(index) {}

  [[nodiscard]] FormulaModel::DocTableIndex getDocTableIndex() const override {
    return FormulaModel::DocTableIndex(_index);
  }
  [[nodiscard]] DOM::Table const& getTable() const override { return table; }
  [[nodiscard]] std::string const& getSheetName() const override { return _name; }

  DOM::Table table;

private:
  std::string _name;
  unsigned long _index;
};

/// A document in memory for tests of the engine: sheets, defined names, list objects.
class FormulaDocument final : public ContextProvider {
public:
  /// With one sheet, `Sheet1`.
  FormulaDocument() { addSheet("Sheet1"); }

  FormulaSheet& addSheet(std::string const& name);
  [[nodiscard]] FormulaSheet& sheet(std::size_t index = 0) { return _sheets[index]; }
  void define(std::string const& name, std::string_view formula);
  /// A name of one sheet only.
  void define(std::string const& name, std::string_view formula, unsigned long sheet);
  void addList(ListObject list) { _lists.push_back(std::move(list)); }
  void setLocale(OfficeUtils::LocaleContext locale) { _locale = std::move(locale); }

  /// Sets a cell of the first sheet, told in A1 notation. A text stands in quotes; TRUE, FALSE and
  /// errors are what they say; `empty` is a cell without a value.
  void set(std::string_view cell, std::string_view value);
  /// Sets cells downwards from one on.
  void setColumn(std::string_view firstCell, std::vector<std::string> const& values);

  /// The result of a formula at a cell of the first sheet, as a text: see describe().
  [[nodiscard]] std::string calc(std::string_view formula, std::string_view cell = "XFD1048576");
  /// The same, its calls over ranges evaluated beforehand; its references may move with no cell.
  [[nodiscard]] std::string calcFolded(std::string_view formula);
  [[nodiscard]] std::string calcArray(std::string_view formula);
  [[nodiscard]] CalcResult calcResult(DOM::FormulaSyntaxTree::Expr const& expr,
                                      std::string_view cell, bool isArrayFormula = false);

  [[nodiscard]] TableContext const* getTableContext(DOM::Table const& table) const override;
  [[nodiscard]] OfficeUtils::LocaleContext const& getLocaleContext() const override {
    return _locale;
  }
  [[nodiscard]] DOM::TimeZone const& getTimeZone() const override { return _timeZone; }
  [[nodiscard]] std::size_t getTableCount() const override { return _sheets.size(); }
  [[nodiscard]] TableContext const* findTableContext(std::string_view sheetName) const override;
  [[nodiscard]] TableContext const* findTableContextAt(
      FormulaModel::DocTableIndex table) const override;
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findDefinedName(
      std::string_view name, FormulaModel::DocTableIndex table) const override;
  [[nodiscard]] ListObject const* findListObject(std::string_view name) const override;
  [[nodiscard]] ListObject const* findListObjectAt(FormulaModel::DocTableIndex table,
                                                   unsigned long row,
                                                   unsigned long column) const override;

private:
  using NameKey = std::pair<unsigned long, std::string>;
  static constexpr unsigned long wholeDocument = ~0UL;

  std::deque<FormulaSheet> _sheets;
  std::map<NameKey, DOM::FormulaSyntaxTree::Expr> _names;
  std::vector<ListObject> _lists;
  OfficeUtils::LocaleContext _locale;
  DOM::TimeZone _timeZone;
};

/// Writes a result: numbers in their shortest form, texts in quotes, TRUE, FALSE, the texts of
/// errors, `empty`, arrays as `{1,2;3,4}`, references as `Sheet index!first row,first column:end
/// row,end column` in brackets.
[[nodiscard]] std::string describe(CalcResult const& result);

}  // namespace Zorv::Formulas
