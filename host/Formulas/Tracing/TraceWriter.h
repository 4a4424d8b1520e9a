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
#include "Formulas/Tracing/ObservedFormula.h"

namespace Zorv::Formulas {

/// Writes a trace while a formula and the defined names in it are evaluated at one cell. Borrows
/// its arguments.
class TraceWriter final : public ValueObserver {
public:
  TraceWriter(TableContext const& table, CellIndex cell, TraceLimits const& limits,
              ExprTrace& trace);
  ~TraceWriter();

  /// Adds the formula that is traced. `known` is what its traces know of it; `shifted` is the
  /// formula as it reads at the cell.
  void addRoot(ObservedFormula const& root, KnownParts& known,
               DOM::FormulaSyntaxTree::Expr const& shifted);

  /// The formula of a defined name with observers; added at the first call. Null if the trace has
  /// no room for it. Valid as long as this object.
  [[nodiscard]] DOM::FormulaSyntaxTree::Expr const* findObserved(
      std::string_view name, DOM::FormulaSyntaxTree::Expr const& formula);

  [[nodiscard]] Value const* findKnown(std::uint32_t id) override;
  void observe(std::uint32_t id, Value const& value) override;

private:
  /// A formula whose sub-expressions are told.
  struct Formula {
    ObservedFormula const* observed;
    std::vector<std::string>
        texts;                 ///< by node, of those that are chosen; as they read at the cell
    std::vector<bool> isTold;  ///< by node
    std::vector<bool> isDate;  ///< by node
    std::uint32_t depth;       ///< of the root
  };

  /// `shifted` is the formula as it reads at the cell.
  void add(ObservedFormula const& observed, DOM::FormulaSyntaxTree::Expr const& shifted,
           std::uint32_t depth);
  void noteNames(Formula const& formula);
  [[nodiscard]] bool isOfRoot(std::uint32_t id) const noexcept;
  [[nodiscard]] Formula& findFormula(std::uint32_t id);
  [[nodiscard]] TraceStep makeStep(Formula& formula, std::uint32_t node, Value const& value) const;
  void tell(Formula& formula, std::uint32_t node, TraceStep step);
  [[nodiscard]] static bool givesDate(Formula const& formula, std::uint32_t node);

  TableContext const& _table;
  CellIndex _cell;
  TraceLimits _limits;
  std::size_t _chosenCount = 0;
  ExprTrace& _trace;
  KnownParts* _known = nullptr;
  std::vector<Formula> _formulas;       ///< by their first identity
  std::vector<ToldNode> _told;          ///< inside of calls that are to be kept
  std::vector<std::size_t> _openCalls;  ///< of those, how many nodes were told before each
  std::map<std::string, std::uint32_t, std::less<>> _depths;  ///< of names, where they first stand
  std::map<DOM::FormulaSyntaxTree::Expr const*, std::unique_ptr<ObservedFormula const>>
      _names;  ///< null for those without room
};

}  // namespace Zorv::Formulas
