#include "host/Formulas/FormulaDocument.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>

#include <fmt/format.h>
#include <boost/variant/apply_visitor.hpp>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/ParseExpr.h"

namespace Zorv::Formulas {

namespace {

std::string lowered(std::string_view text) {
  std::string result(text);
  std::ranges::transform(result, result.begin(),
                         [](char c) { return 'A' <= c && c <= 'Z' ? char(c - 'A' + 'a') : c; });
  return result;
}

/// Rows and columns from 0.
std::pair<unsigned long, unsigned long> toPosition(std::string_view cell) {
  unsigned long column = 0;
  std::size_t at = 0;
  for (; at < cell.size() && 'A' <= cell[at] && cell[at] <= 'Z'; ++at) {
    column = column * 26 + static_cast<unsigned long>(cell[at] - 'A' + 1);
  }
  return {std::stoul(std::string(cell.substr(at))) - 1, column - 1};
}

FormulaValue toValue(std::string_view text) {
  if (text == "empty") {
    return FormulaModel::FormulaEmpty{};
  }
  if (text == "TRUE" || text == "FALSE") {
    return FormulaModel::FormulaBoolean{text == "TRUE"};
  }
  if (auto const error = FormulaModel::parseErrorCode(text)) {
    return FormulaModel::FormulaError{*error};
  }
  if (text.starts_with('"')) {
    return FormulaModel::FormulaString{std::string(text.substr(1, text.size() - 2))};
  }
  return FormulaModel::FormulaNumber{FloatNumber(std::stod(std::string(text)))};
}

std::string describeReference(Reference const& reference) {
  TableRange const& range = reference.range;
  return fmt::format("[{}!{},{}:{},{}]", reference.table.get(), range.firstRow, range.firstColumn,
                     range.endRow, range.endColumn);
}

struct Describe {
  using result_type = std::string;

  std::string operator()(FormulaModel::FormulaEmpty) const { return "empty"; }
  std::string operator()(FormulaModel::FormulaNumber value) const {
    return fmt::format("{}", value.value.get());
  }
  std::string operator()(FormulaModel::FormulaString const& value) const {
    return '"' + value.value + '"';
  }
  std::string operator()(FormulaModel::FormulaBoolean value) const {
    return value.value ? "TRUE" : "FALSE";
  }
  std::string operator()(FormulaModel::FormulaError value) const {
    return std::string(FormulaModel::toText(value.code));
  }
  std::string operator()(FormulaValue const& value) const {
    return boost::apply_visitor(*this, value);
  }
  std::string operator()(std::shared_ptr<FormulaModel::FormulaArray const> const& array) const {
    std::string text = "{";
    for (std::size_t row = 0; row < array->getHeight(); ++row) {
      for (std::size_t column = 0; column < array->getWidth(); ++column) {
        text += column != 0 ? "," : row != 0 ? ";" : "";
        text += (*this)(array->at(row, column));
      }
    }
    return text + "}";
  }
  std::string operator()(std::vector<std::shared_ptr<Reference const>> const& references) const {
    std::string text;
    for (auto const& reference : references) {
      text += describeReference(*reference);
    }
    return text;
  }
  std::string operator()(std::shared_ptr<Reference const> const& reference) const {
    return describeReference(*reference);
  }
};

}  // namespace

FormulaSheet& FormulaDocument::addSheet(std::string const& name) {
  return _sheets.emplace_back(name, _sheets.size());
}

void FormulaDocument::define(std::string const& name, std::string_view formula) {
  define(name, formula, wholeDocument);
}

void FormulaDocument::define(std::string const& name, std::string_view formula,
                             unsigned long sheet) {
  _names[{sheet, lowered(name)}] = parseDefinedName(formula);
}

void FormulaDocument::set(std::string_view cell, std::string_view value) {
  auto const [row, column] = toPosition(cell);
  sheet().table.setValue(row, column, toValue(value));
}

void FormulaDocument::setColumn(std::string_view firstCell,
                                std::vector<std::string> const& values) {
  auto [row, column] = toPosition(firstCell);
  for (std::string const& value : values) {
    sheet().table.setValue(row++, column, toValue(value));
  }
}

CalcResult FormulaDocument::calcResult(DOM::FormulaSyntaxTree::Expr const& expr,
                                       std::string_view cell, bool isArrayFormula) {
  auto const [row, column] = toPosition(cell);
  RuntimeDependenciesResolver resolver;
  boost::optional<FormulaModel::ArrayFormulaIndices> indices;
  if (isArrayFormula) {
    indices = FormulaModel::ArrayFormulaIndices{};
  }
  Context const context(&sheet(), RowIndex(row), ColumnIndex(column), indices, DOM::RowID(0),
                        DOM::ColumnID(0));
  return calcExpr(expr, context, *this, resolver);
}

std::string FormulaDocument::calc(std::string_view formula, std::string_view cell) {
  return describe(calcResult(parseExpr(formula), cell));
}

std::string FormulaDocument::calcFolded(std::string_view formula) {
  auto parts = parseExpr(formula).getParts();
  for (auto& reference : parts.references) {
    reference.firstRowIsRelative = reference.firstColumnIsRelative = false;
    reference.lastRowIsRelative = reference.lastColumnIsRelative = false;
  }
  DOM::FormulaSyntaxTree::Expr const expr(std::move(parts));
  std::string_view const cell = "XFD1048576";
  auto const [row, column] = toPosition(cell);
  Context const context(&sheet(), RowIndex(row), ColumnIndex(column), boost::none, DOM::RowID(0),
                        DOM::ColumnID(0));
  EvaluationSession session;
  return describe(calcResult(foldExpr(expr, context, *this, session).value_or(expr), cell));
}

std::string FormulaDocument::calcArray(std::string_view formula) {
  return describe(calcResult(parseExpr(formula), "XFD1048576", true));
}

TableContext const* FormulaDocument::getTableContext(DOM::Table const& table) const {
  auto const found = std::ranges::find_if(
      _sheets, [&](FormulaSheet const& sheet) { return &sheet.table == &table; });
  return &*found;
}

TableContext const* FormulaDocument::findTableContext(std::string_view sheetName) const {
  auto const found = std::ranges::find_if(_sheets, [&](FormulaSheet const& sheet) {
    return lowered(sheet.getSheetName()) == lowered(sheetName);
  });
  return found == _sheets.end() ? nullptr : &*found;
}

TableContext const* FormulaDocument::findTableContextAt(FormulaModel::DocTableIndex table) const {
  return table.get() < _sheets.size() ? &_sheets[table.get()] : nullptr;
}

DOM::FormulaSyntaxTree::Expr const* FormulaDocument::findDefinedName(
    std::string_view name, FormulaModel::DocTableIndex table) const {
  for (unsigned long const owner : {table.get(), wholeDocument}) {
    auto const found = _names.find({owner, lowered(name)});
    if (found != _names.end()) {
      return &found->second;
    }
  }
  return nullptr;
}

ListObject const* FormulaDocument::findListObject(std::string_view name) const {
  auto const found = std::ranges::find_if(
      _lists, [&](ListObject const& list) { return lowered(list.name) == lowered(name); });
  return found == _lists.end() ? nullptr : &*found;
}

ListObject const* FormulaDocument::findListObjectAt(FormulaModel::DocTableIndex table,
                                                    unsigned long row, unsigned long column) const {
  auto const found = std::ranges::find_if(_lists, [&](ListObject const& list) {
    return list.table == table && list.range.contains(row, column);
  });
  return found == _lists.end() ? nullptr : &*found;
}

std::string describe(CalcResult const& result) { return boost::apply_visitor(Describe(), result); }

}  // namespace Zorv::Formulas
