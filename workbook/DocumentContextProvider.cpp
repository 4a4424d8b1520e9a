#include "workbook/DocumentContextProvider.h"

#include <utility>

#include "Utils/CaseFolding.h"
#include "Utils/Exceptions.h"

namespace Zorv::Workbook {

namespace {

class SheetTableContext final : public Formulas::TableContext {
public:
  /// Borrows the name and the table.
  SheetTableContext(std::string const& name, DOM::Table const& table, std::size_t index) noexcept
      : _name(name), _table(table), _index(index) {}

  [[nodiscard]] FormulaModel::DocTableIndex getDocTableIndex() const override { return _index; }
  [[nodiscard]] DOM::Table const& getTable() const override { return _table; }
  [[nodiscard]] std::string const& getSheetName() const override { return _name; }

private:
  std::string const& _name;
  DOM::Table const& _table;
  FormulaModel::DocTableIndex _index;
};

/// The value of a case-folded name, or null.
template <class Values>
auto const* findByName(Values const& values,
                       std::unordered_map<std::string, std::size_t> const& places,
                       std::string const& foldedName) {
  auto const found = places.find(foldedName);
  return found == places.end() ? nullptr : &values[found->second];
}

}  // namespace

DocumentContextProvider::DocumentContextProvider(Document const& document,
                                                 std::string const& localeName,
                                                 DOM::TimeZone timeZone)
    : _document(document),
      _locale(localeName, document.getDateSystem()),
      _timeZone(std::move(timeZone)),
      _namesOfSheet(document.getSheets().size()),
      _listObjectsOfSheet(document.getSheets().size()) {
  for (Sheet const& sheet : document.getSheets()) {
    addTable(sheet.name, *sheet.table);
  }
  for (ExternalSheet const& sheet : document.getExternalSheets()) {
    addTable(sheet.name, *sheet.table);
  }
  for (std::size_t index = 0; index < document.getDefinedNames().size(); ++index) {
    DefinedName const& name = document.getDefinedNames()[index];
    ByFoldedName& scope = name.sheet ? _namesOfSheet.at(*name.sheet) : _namesOfAllSheets;
    scope.emplace(foldCase(name.name), index);
  }
  for (std::size_t index = 0; index < document.getListObjects().size(); ++index) {
    Formulas::ListObject const& listObject = document.getListObjects()[index];
    _listObjectsByName.emplace(foldCase(listObject.name), index);
    _listObjectsOfSheet.at(listObject.table.get()).push_back(index);
  }
}

DocumentContextProvider::~DocumentContextProvider() = default;

void DocumentContextProvider::addTable(std::string const& name, DOM::Table const& table) {
  std::size_t const index = _tableContexts.size();
  _tableContexts.push_back(std::make_unique<SheetTableContext>(name, table, index));
  _sheetsByTable.emplace(&table, index);
  _sheetsByName.emplace(foldCase(name), index);
}

Formulas::TableContext const* DocumentContextProvider::getTableContext(
    DOM::Table const& table) const {
  auto const found = _sheetsByTable.find(&table);
  if (found == _sheetsByTable.end()) {
    throw BaseRuntimeError("the table belongs to another document");
  }
  return _tableContexts[found->second].get();
}

OfficeUtils::LocaleContext const& DocumentContextProvider::getLocaleContext() const {
  return _locale;
}

DOM::TimeZone const& DocumentContextProvider::getTimeZone() const { return _timeZone; }

std::size_t DocumentContextProvider::getTableCount() const { return _document.getSheets().size(); }

Formulas::TableContext const* DocumentContextProvider::findTableContext(
    std::string_view sheetName) const {
  auto const* found = findByName(_tableContexts, _sheetsByName, foldCase(sheetName));
  return found ? found->get() : nullptr;
}

Formulas::TableContext const* DocumentContextProvider::findTableContextAt(
    FormulaModel::DocTableIndex table) const {
  return table.get() < _tableContexts.size() ? _tableContexts[table.get()].get() : nullptr;
}

DOM::FormulaSyntaxTree::Expr const* DocumentContextProvider::findDefinedName(
    std::string_view name, FormulaModel::DocTableIndex table) const {
  std::string const folded = foldCase(name);
  DefinedName const* found = nullptr;
  if (table.get() < _namesOfSheet.size()) {
    found = findByName(_document.getDefinedNames(), _namesOfSheet[table.get()], folded);
  }
  if (!found) {
    found = findByName(_document.getDefinedNames(), _namesOfAllSheets, folded);
  }
  return found && found->expr ? &*found->expr : nullptr;
}

Formulas::ListObject const* DocumentContextProvider::findListObject(std::string_view name) const {
  return findByName(_document.getListObjects(), _listObjectsByName, foldCase(name));
}

Formulas::ListObject const* DocumentContextProvider::findListObjectAt(
    FormulaModel::DocTableIndex table, unsigned long row, unsigned long column) const {
  if (table.get() >= _listObjectsOfSheet.size()) {
    return nullptr;
  }
  for (std::size_t const index : _listObjectsOfSheet[table.get()]) {
    Formulas::ListObject const& listObject = _document.getListObjects()[index];
    if (listObject.range.contains(row, column)) {
      return &listObject;
    }
  }
  return nullptr;
}

}  // namespace Zorv::Workbook
