#include "Formulas/FindDependencies.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "Formulas/Evaluation/SheetRange.h"
#include "Formulas/Functions/BuiltinFunctions.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::CellReference;
using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::NameReference;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::noIndex;
using DOM::FormulaSyntaxTree::Operator;
using DOM::FormulaSyntaxTree::StructuredReference;

/// One dimension of a reference.
struct Dimension {
  std::uint32_t first;
  std::uint32_t last;
  bool firstIsRelative;
  bool lastIsRelative;

  /// Relative corners move around the sheet's edge one by one, and then enclose what lay outside.
  [[nodiscard]] bool keepsSize() const noexcept {
    return firstIsRelative == lastIsRelative && (!firstIsRelative || first == last);
  }
};

Dimension rowsOf(CellReference const& reference) noexcept {
  return {reference.firstRow, reference.lastRow, reference.firstRowIsRelative,
          reference.lastRowIsRelative};
}

Dimension columnsOf(CellReference const& reference) noexcept {
  return {reference.firstColumn, reference.lastColumn, reference.firstColumnIsRelative,
          reference.lastColumnIsRelative};
}

/// True if a dimension of some values, taken in the size of a range, never leaves their reference.
bool holdsResized(Dimension const& values, Dimension const& range) noexcept {
  return range.keepsSize() && values.firstIsRelative == values.lastIsRelative &&
         values.last - values.first == range.last - range.first;
}

/// A function that asks something of an area as a whole.
struct AreaUse {
  std::string_view function;
  AreaAspect aspect;
  std::uint32_t argument = 0;       ///< the index of the area among the arguments
  std::uint32_t mostArguments = 1;  ///< of a call that has only one list of numbers
};

constexpr std::array areaUses = {
    AreaUse{"AVERAGE", AreaAspect::Summary},
    AreaUse{"COUNT", AreaAspect::Summary},
    AreaUse{"COUNTA", AreaAspect::Summary},
    AreaUse{"COUNTIF", AreaAspect::Classes, 0, 2},
    AreaUse{"LARGE", AreaAspect::Order, 0, 2},
    AreaUse{"MAX", AreaAspect::Order},
    AreaUse{"MEDIAN", AreaAspect::Order},
    AreaUse{"MIN", AreaAspect::Order},
    AreaUse{"PERCENTILE", AreaAspect::Order, 0, 2},
    AreaUse{"PERCENTILE.EXC", AreaAspect::Order, 0, 2},
    AreaUse{"PERCENTILE.INC", AreaAspect::Order, 0, 2},
    AreaUse{"QUARTILE", AreaAspect::Order, 0, 2},
    AreaUse{"QUARTILE.EXC", AreaAspect::Order, 0, 2},
    AreaUse{"QUARTILE.INC", AreaAspect::Order, 0, 2},
    AreaUse{"RANK", AreaAspect::Order, 1, 3},
    AreaUse{"RANK.AVG", AreaAspect::Order, 1, 3},
    AreaUse{"RANK.EQ", AreaAspect::Order, 1, 3},
    AreaUse{"SMALL", AreaAspect::Order, 0, 2},
    AreaUse{"SUM", AreaAspect::Summary},
};

/// The use of an area by a function that is called with some arguments; null if there is none.
AreaUse const* findAreaUse(std::string_view function, std::uint32_t argumentCount) noexcept {
  auto const use = std::ranges::lower_bound(areaUses, function, {}, &AreaUse::function);
  bool const isUse = use != areaUses.end() && use->function == function &&
                     use->argument < argumentCount && argumentCount <= use->mostArguments;
  return isUse ? &*use : nullptr;
}

std::uint32_t argumentAt(ExprParts const& parts, Node const& call, std::uint32_t index) noexcept {
  std::uint32_t argument = call.firstArgument;
  for (; index > 0; --index) {
    argument = parts.nodes[argument].next;
  }
  return argument;
}

/// True for a criterion that is written with an operator of order, such as `">5"` or `"<"&A1`.
bool asksForOrder(ExprParts const& parts, Node const& criterion) {
  Node const& first =
      criterion.kind == NodeKind::Binary ? parts.nodes[criterion.firstArgument] : criterion;
  if (first.kind != NodeKind::Text) {
    return false;
  }
  std::string_view const text = parts.texts[first.index];
  return text.starts_with('>') || (text.starts_with('<') && !text.starts_with("<>"));
}

AreaAspects aspectsOf(ExprParts const& parts, Node const& call, AreaUse const& use) {
  switch (use.aspect) {
    case AreaAspect::Summary:
      return {.summary = true};
    case AreaAspect::Order:
      return {.order = true};
    default: {
      bool const byOrder = asksForOrder(parts, parts.nodes[argumentAt(parts, call, 1)]);
      return {.order = byOrder, .classes = !byOrder};
    }
  }
}

/// The cell whose value a COUNTIF counts, if its criterion is a reference to one of the formula's
/// own table.
std::optional<CellReference> findCountedCell(ExprParts const& parts, Node const& call,
                                             AreaAspects const& aspects) {
  if (!aspects.classes) {
    return std::nullopt;
  }
  Node const& criterion = parts.nodes[argumentAt(parts, call, 1)];
  if (criterion.kind != NodeKind::Reference) {
    return std::nullopt;
  }
  CellReference const& cell = parts.references[criterion.index];
  return cell.isSingleCell() && cell.sheet == noIndex ? std::optional(cell) : std::nullopt;
}

/// Gathers the dependencies of an expression and of the names that it uses.
class DependencyFinder {
public:
  DependencyFinder(TableContext const& table, ContextProvider const& provider) noexcept
      : _table(table), _provider(provider) {}

  Dependencies find(ExprParts const& parts) {
    visit(parts);
    _isInName = true;
    while (!_names.empty()) {
      ExprParts const& ofName = *_names.back();
      _names.pop_back();
      visit(ofName);
    }
    return std::move(_found);
  }

private:
  /// Use that functions make of a node.
  struct Use {
    bool isPlaceOnly = false;
    AreaAspects aspects;
    std::optional<CellReference> countedCell;
  };

  void visit(ExprParts const& parts) {
    std::vector<Use> uses(parts.nodes.size());
    for (Node const& node : parts.nodes) {
      if (node.kind == NodeKind::Function) {
        visitFunction(parts, node, uses);
      }
    }
    for (std::uint32_t node = 0; node < parts.nodes.size(); ++node) {
      if (!uses[node].isPlaceOnly) {
        visitNode(parts, parts.nodes[node], uses[node]);
      }
    }
  }

  void visitFunction(ExprParts const& parts, Node const& node, std::vector<Use>& uses) {
    FunctionEntry const& function = builtinFunctions().at(node.function);
    if (function.traits.asksPlaceOfFirst && node.argumentCount > 0) {
      uses[node.firstArgument].isPlaceOnly = true;
    }
    if (AreaUse const* const use = findAreaUse(function.name, node.argumentCount)) {
      Use& ofArea = uses[argumentAt(parts, node, use->argument)];
      ofArea.aspects = aspectsOf(parts, node, *use);
      ofArea.countedCell = findCountedCell(parts, node, ofArea.aspects);
    }
    if (function.traits.isVolatile) {
      addVolatile(function.name);
    }
    if ((function.name == "SUMIF" || function.name == "AVERAGEIF") && node.argumentCount > 2) {
      addResized(parts, node);
    }
  }

  void addVolatile(std::string_view function) {
    if (function == "TODAY") {
      _found.onDay = true;
    } else if (function == "NOW" || function.starts_with("RAND")) {
      _found.onMoment = true;
    } else {
      _found.onAnyCell = true;
    }
  }

  /// The third argument is taken in the size of the first.
  void addResized(ExprParts const& parts, Node const& call) {
    Node const& range = parts.nodes[call.firstArgument];
    Node const& values = parts.nodes[parts.nodes[range.next].next];
    bool isInside = false;
    if (range.kind == NodeKind::Reference && values.kind == NodeKind::Reference) {
      CellReference const& ofRange = parts.references[range.index];
      CellReference const& ofValues = parts.references[values.index];
      isInside = holdsResized(rowsOf(ofValues), rowsOf(ofRange)) &&
                 holdsResized(columnsOf(ofValues), columnsOf(ofRange));
    }
    _found.onAnyCell = _found.onAnyCell || !isInside;
  }

  void visitNode(ExprParts const& parts, Node const& node, Use const& use) {
    if (node.kind == NodeKind::Reference) {
      addReference(parts, parts.references[node.index], use);
    } else if (node.kind == NodeKind::StructuredReference) {
      addStructured(parts, parts.structuredReferences[node.index], use.aspects);
    } else if (node.kind == NodeKind::Name) {
      NameReference const& name = parts.names[node.index];
      followName(parts.texts[name.name], findSheet(parts, name.sheet));
    } else if (node.kind == NodeKind::UnknownFunction) {
      followName(parts.texts[node.index], &_table);
    } else if (node.kind == NodeKind::Binary && node.op == Operator::Range) {
      _found.onAnyCell = true;
    }
  }

  void addReference(ExprParts const& parts, CellReference const& reference, Use const& use) {
    if (TableContext const* const table = findSheet(parts, reference.sheet)) {
      bool const isFixedArea = !reference.isRelative() && !reference.isSingleCell();
      _found.references.push_back({addressOf(*table), reference, _isInName,
                                   isFixedArea ? use.aspects : AreaAspects(),
                                   isFixedArea ? use.countedCell : std::nullopt});
      return;
    }
    for (auto const* const table : findSheetRange(_provider, parts.texts[reference.sheet])) {
      _found.references.push_back({addressOf(*table), reference, _isInName, {}});
    }
  }

  /// The whole list, which for the cell's own list is somewhere in the table; or of either the part
  /// in the cell's row.
  void addStructured(ExprParts const& parts, StructuredReference const& reference,
                     AreaAspects const& aspects) {
    DOM::Table const* table = nullptr;
    TableRange range{0, 0, DOM::Table::rowCount, DOM::Table::columnCount};
    if (reference.list != noIndex) {
      ListObject const* const list = _provider.findListObject(parts.texts[reference.list]);
      TableContext const* const ofList = list == nullptr ? nullptr : findTable(list->table);
      if (ofList == nullptr || list->range.isEmpty()) {
        return;
      }
      range = list->range;
      table = addressOf(*ofList);
    }
    CellReference corners{.firstRow = static_cast<std::uint32_t>(range.firstRow),
                          .firstColumn = static_cast<std::uint32_t>(range.firstColumn),
                          .lastRow = static_cast<std::uint32_t>(range.endRow - 1),
                          .lastColumn = static_cast<std::uint32_t>(range.endColumn - 1)};
    if (reference.thisRow) {
      corners.firstRow = corners.lastRow = 0;
      corners.firstRowIsRelative = corners.lastRowIsRelative = true;
    }
    bool const isFixedArea =
        reference.list != noIndex && !reference.thisRow && !corners.isSingleCell();
    _found.references.push_back({table, corners, true, isFixedArea ? aspects : AreaAspects()});
  }

  void followName(std::string_view name, TableContext const* table) {
    Expr const* const expr =
        table == nullptr ? nullptr : _provider.findDefinedName(name, table->getDocTableIndex());
    if (expr != nullptr && _followed.insert(expr).second) {
      _names.push_back(&expr->getParts());
    }
  }

  [[nodiscard]] TableContext const* findSheet(ExprParts const& parts, std::uint32_t sheet) const {
    if (sheet == noIndex) {
      return &_table;
    }
    std::string_view const name = parts.texts[sheet];
    return name.empty() ? nullptr : _provider.findTableContext(name);
  }

  [[nodiscard]] TableContext const* findTable(FormulaModel::DocTableIndex table) const {
    return _table.getDocTableIndex() == table ? &_table : _provider.findTableContextAt(table);
  }

  [[nodiscard]] DOM::Table const* addressOf(TableContext const& table) const {
    DOM::Table const& address = table.getTable();
    return &address == &_table.getTable() ? nullptr : &address;
  }

  TableContext const& _table;
  ContextProvider const& _provider;
  bool _isInName = false;
  std::vector<ExprParts const*> _names;  ///< yet to be visited
  std::set<Expr const*> _followed;
  Dependencies _found;
};

}  // namespace

Dependencies findDependencies(Expr const& expr, TableContext const& tableContext,
                              ContextProvider const& contextProvider) {
  return DependencyFinder(tableContext, contextProvider).find(expr.getParts());
}

}  // namespace Zorv::Formulas
