#include "Formulas/FindUnresolved.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

#include "Formulas/Evaluation/SheetRange.h"
#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::NameReference;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::StructuredReference;

/// Gathers what an expression and the names that it uses refer to in vain.
class UnresolvedFinder {
public:
  UnresolvedFinder(ContextProvider const& provider, FormulaModel::DocTableIndex table)
      : _provider(&provider), _table(table) {}

  std::vector<Unresolved> find(ExprParts const& parts) {
    _formulas.push_back(&parts);
    for (std::size_t next = 0; next < _formulas.size(); ++next) {
      visit(*_formulas[next]);
    }
    return std::move(_found);
  }

private:
  void visit(ExprParts const& parts) {
    for (Node const& node : parts.nodes) {
      switch (node.kind) {
        case NodeKind::Reference:
          visitReference(parts, parts.references[node.index].sheet);
          break;
        case NodeKind::Name:
          visitName(parts, parts.names[node.index]);
          break;
        case NodeKind::StructuredReference:
          visitList(parts, parts.structuredReferences[node.index]);
          break;
        case NodeKind::UnknownFunction:
          followName(parts.texts[node.index], _table, UnresolvedKind::Function);
          break;
        default:
          break;
      }
    }
  }

  void visitReference(ExprParts const& parts, std::uint32_t sheet) {
    if (sheet != noIndex && findSheetRange(*_provider, parts.texts[sheet]).empty()) {
      visitSheet(parts, sheet);
    }
  }

  /// The table of a sheet that a reference names; null for one that the document does not have.
  TableContext const* visitSheet(ExprParts const& parts, std::uint32_t sheet) {
    if (sheet == noIndex) {
      return nullptr;
    }
    std::string const& name = parts.texts[sheet];
    TableContext const* const table = name.empty() ? nullptr : _provider->findTableContext(name);
    if (table == nullptr && !addWorkbook(name)) {
      add(UnresolvedKind::Sheet, name.empty() ? "#REF!" : name);
    }
    return table;
  }

  void visitName(ExprParts const& parts, NameReference const& name) {
    TableContext const* const table = visitSheet(parts, name.sheet);
    if (name.sheet == noIndex || table != nullptr) {
      followName(parts.texts[name.name], table == nullptr ? _table : table->getDocTableIndex(),
                 UnresolvedKind::Name);
    }
  }

  void followName(std::string const& name, FormulaModel::DocTableIndex table, UnresolvedKind kind) {
    Expr const* const expr = _provider->findDefinedName(name, table);
    if (expr == nullptr) {
      add(kind, name);
    } else if (_followed.insert(expr).second) {
      _formulas.push_back(&expr->getParts());
    }
  }

  void visitList(ExprParts const& parts, StructuredReference const& reference) {
    if (reference.list == noIndex) {
      return;
    }
    std::string const& name = parts.texts[reference.list];
    ListObject const* const list = _provider->findListObject(name);
    if (list == nullptr) {
      if (!addWorkbook(name)) {
        add(UnresolvedKind::ListObject, name);
      }
      return;
    }
    for (std::uint32_t const column : {reference.firstColumn, reference.lastColumn}) {
      if (column != noIndex && !hasColumn(*list, parts.texts[column])) {
        add(UnresolvedKind::ListObject, name + '[' + parts.texts[column] + ']');
      }
    }
  }

  static bool hasColumn(ListObject const& list, std::string_view name) {
    return std::ranges::any_of(list.columnNames,
                               [&](std::string const& column) { return equalTexts(column, name); });
  }

  /// Adds the workbook to which a sheet's name such as `[1]Sheet1` belongs; false for other names.
  bool addWorkbook(std::string const& sheet) {
    std::size_t const first = sheet.find('[');
    std::size_t const last = sheet.find(']', first);
    if (first == std::string::npos || last == std::string::npos) {
      return false;
    }
    add(UnresolvedKind::ExternalWorkbook, sheet.substr(first, last - first + 1));
    return true;
  }

  void add(UnresolvedKind kind, std::string text) {
    Unresolved unresolved{kind, std::move(text)};
    if (std::ranges::find(_found, unresolved) == _found.end()) {
      _found.push_back(std::move(unresolved));
    }
  }

  ContextProvider const* _provider;
  FormulaModel::DocTableIndex _table;
  std::vector<ExprParts const*> _formulas;  ///< visited in this order
  std::set<Expr const*> _followed;
  std::vector<Unresolved> _found;
};

}  // namespace

std::vector<Unresolved> findUnresolved(Expr const& expr, ContextProvider const& contextProvider,
                                       FormulaModel::DocTableIndex table) {
  return UnresolvedFinder(contextProvider, table).find(expr.getParts());
}

}  // namespace Zorv::Formulas
