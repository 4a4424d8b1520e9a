#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Evaluation/ValueObserver.h"
#include "Formulas/TableContext.h"
#include "Formulas/TraceExpr.h"
#include "Formulas/Tracing/NodeChoice.h"

namespace Zorv::Formulas {

/// Writes a trace while a formula and the defined names in it are evaluated at one cell. Borrows
/// its arguments.
class TraceWriter final : public ValueObserver {
public:
  TraceWriter(TableContext const& table, CellIndex cell, TraceLimits const& limits,
              ExprTrace& trace);
  ~TraceWriter();

  /// Adds the formula that is traced, as it reads at the cell. Returns it with observers.
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr addRoot(DOM::FormulaSyntaxTree::Expr const& shifted);

  /// The formula of a defined name with observers; added at the first call. Null if the trace has
  /// no room for it. Valid as long as this object.
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findObserved(
      std::string_view name, DOM::FormulaSyntaxTree::Expr const& formula);

  void observe(std::uint32_t id, Value const& value) override;

private:
  /// A formula whose sub-expressions are told.
  struct Formula {
    DOM::FormulaSyntaxTree::ExprParts parts;  ///< as it reads at the cell
    NodeChoice choice;
    std::vector<std::string> texts;  ///< by node, of those that are chosen
    std::vector<bool> isTold;        ///< by node
    std::vector<bool> isDate;        ///< by node
    std::uint32_t depth;             ///< of the root
    std::uint32_t firstId;           ///< of its observing calls
  };

  /// `written` is the formula as it is evaluated, `shifted` as it reads at the cell.
  DOM::FormulaSyntaxTree::Expr add(DOM::FormulaSyntaxTree::Expr const& written,
                                   DOM::FormulaSyntaxTree::Expr const& shifted,
                                   std::uint32_t depth);
  void noteNames(Formula const& formula);
  [[nodiscard]] Formula& findFormula(std::uint32_t id);
  [[nodiscard]] static bool givesDate(Formula const& formula, std::uint32_t node);

  TableContext const& _table;
  CellIndex _cell;
  TraceLimits _limits;
  std::size_t _chosenCount = 0;
  ExprTrace& _trace;
  std::vector<Formula> _formulas;                             ///< by their first identity
  std::map<std::string, std::uint32_t, std::less<>> _depths;  ///< of names, where they first stand
  std::map<DOM::FormulaSyntaxTree::Expr const*,
           std::unique_ptr<DOM::FormulaSyntaxTree::Expr const>>
      _names;  ///< null for those without room
};

}  // namespace Zorv::Formulas
