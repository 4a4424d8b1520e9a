#pragma once

#include <cstdint>
#include <span>
#include <string_view>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/Context.h"
#include "Formulas/ContextProvider.h"
#include "Formulas/Evaluation/Workspace.h"
#include "Formulas/RuntimeDependenciesResolver.h"
#include "Formulas/Values/FunctionTable.h"
#include "Formulas/Values/Outcome.h"
#include "Formulas/Values/Value.h"

namespace Zorv::Formulas {

/// How a range is used where one value is needed.
enum class Mode : std::uint8_t {
  Single,     ///< the cell of the range in the row or column of the formula's cell is taken
  ByElement,  ///< everything is evaluated once for each of the range's cells
};

/// How far a formula's relative references are moved before they are read, around the sheet's
/// edges.
struct Offset {
  long rows = 0;
  long columns = 0;
};

/// A formula under evaluation.
struct Frame {
  DOM::FormulaSyntaxTree::ExprParts const* parts = nullptr;
  Offset offset;
  std::span<Value> locals;  ///< the values of the names of LET and LAMBDA, by slot

  [[nodiscard]] DOM::FormulaSyntaxTree::Node const& nodeAt(std::uint32_t node) const noexcept {
    return parts->nodes[node];
  }
};

/// Evaluates formulas at one place, once each.
///
/// Cells are read in place. Ordinary formulas take no memory from the heap; what larger ones take
/// is released with the evaluator. Values stay valid as long as the evaluator lives and the
/// document is not changed. One evaluator at a time may have a workspace.
class Evaluator {
public:
  Evaluator(Context const& context, ContextProvider const& provider,
            RuntimeDependenciesResolver& dependencies, Workspace& workspace,
            FunctionTable const& functions) noexcept
      : _context(&context),
        _provider(&provider),
        _dependencies(&dependencies),
        _workspace(&workspace),
        _functions(&functions) {
    _workspace->steps.begin();
  }
  Evaluator(Evaluator const&) = delete;
  Evaluator& operator=(Evaluator const&) = delete;
  ~Evaluator() { _workspace->arena.release(); }

  /// The value of a whole formula.
  [[nodiscard]] Value evaluate(DOM::FormulaSyntaxTree::ExprParts const& parts, Offset offset,
                               Mode mode);

  /// The value of a node: a single value, a reference or an array.
  [[nodiscard]] Value evaluateNode(Frame const& frame, std::uint32_t node, Mode mode);

  /// The value of the formula that a defined name stands for; `#NAME?` where there is no such name.
  [[nodiscard]] Value evaluateDefinedName(std::string_view name, TableContext const& table,
                                          Mode mode);

  /// The same as evaluateNode(), with references read: a single value or an array.
  [[nodiscard]] Value evaluateOperand(Frame const& frame, std::uint32_t node, Mode mode);

  /// Reads a reference as the mode says; other values stay what they are, but for functions, which
  /// are `#CALC!` where a value is wanted.
  [[nodiscard]] Value toOperand(Value const& value, Mode mode);

  /// Makes a reference an array, and a single value one of one element.
  [[nodiscard]] Array const& toArray(Value const& value);

  /// A single value as a text: texts as they are, numbers in general format, truth values as words,
  /// empties as the empty text. The text may lie in the evaluation's arena.
  [[nodiscard]] Outcome<std::string_view> toText(Value const& value);

  /// A copy of a text that lasts as long as the evaluator. `#VALUE!` for one that is longer than a
  /// cell may hold.
  [[nodiscard]] Value makeText(std::string_view text);

  /// The same for a text that lasts already.
  [[nodiscard]] static Value checkText(std::string_view text) noexcept;

  /// The cell at a position of the formula's own table, or null. Fast for one beside the last.
  [[nodiscard]] DOM::Cell const* findOwnCell(std::uint32_t row,
                                             std::uint32_t column) const noexcept {
    DOM::Table const& table = _context->getTableContext()->getTable();
    return table.findCell(row, column, _workspace->lastCell);
  }

  /// The indexes of ranges; null for an evaluation without a LookupCache.
  [[nodiscard]] LookupSession* lookups() noexcept {
    return _workspace->lookups ? &*_workspace->lookups : nullptr;
  }

  /// The current date and time in the document's time zone.
  [[nodiscard]] OfficeUtils::DateTime now() const;
  /// The current moment.
  [[nodiscard]] OfficeUtils::Clock::TimePoint readMoment() const;

  /// The meter of the evaluation's steps.
  [[nodiscard]] StepMeter& steps() const noexcept { return _workspace->steps; }
  /// The observer of a formula that calls the observing function; null for other formulas.
  [[nodiscard]] ValueObserver* observer() const noexcept { return _workspace->observer; }
  [[nodiscard]] Arena& arena() noexcept { return _workspace->arena; }
  [[nodiscard]] FunctionTable const& functions() const noexcept { return *_functions; }
  [[nodiscard]] Context const& context() const noexcept { return *_context; }
  [[nodiscard]] ContextProvider const& provider() const noexcept { return *_provider; }
  [[nodiscard]] RuntimeDependenciesResolver& dependencies() noexcept { return *_dependencies; }
  [[nodiscard]] OfficeUtils::LocaleContext const& locale() const {
    return _provider->getLocaleContext();
  }
  [[nodiscard]] std::uint32_t row() const noexcept {
    return static_cast<std::uint32_t>(_context->getRow().get());
  }
  [[nodiscard]] std::uint32_t column() const noexcept {
    return static_cast<std::uint32_t>(_context->getColumn().get());
  }

private:
  Value evaluateInner(Frame const& frame, std::uint32_t node, Mode mode);
  [[nodiscard]] Value evaluateLeaf(Frame const& frame,
                                   DOM::FormulaSyntaxTree::Node const& node) const;
  Value evaluateUnary(Frame const& frame, DOM::FormulaSyntaxTree::Node const& node, Mode mode);
  Value evaluateValueOperators(Frame const& frame, std::uint32_t node, Mode mode);
  Value evaluateReferenceOperator(Frame const& frame, DOM::FormulaSyntaxTree::Node const& node,
                                  Mode mode);
  Value evaluateArrayConstant(Frame const& frame, DOM::FormulaSyntaxTree::Node const& node);
  Value evaluateName(Frame const& frame, DOM::FormulaSyntaxTree::Node const& node, Mode mode);
  Value combine(DOM::FormulaSyntaxTree::Operator op, Value const& left, Value const& right);
  Value intersect(Area const& area) const;
  std::string_view writeNumber(double number);

  Context const* _context;
  ContextProvider const* _provider;
  RuntimeDependenciesResolver* _dependencies;
  Workspace* _workspace;
  FunctionTable const* _functions;
  std::uint32_t _depth = 0;
};

}  // namespace Zorv::Formulas
