#include "Formulas/TraceExpr.h"

#include <functional>
#include <new>
#include <utility>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/Evaluation/EvaluateExpr.h"
#include "Formulas/Evaluation/ValueObserver.h"
#include "Formulas/ShiftExpr.h"
#include "Formulas/Text/ExprText.h"
#include "Formulas/Tracing/NodeChoice.h"
#include "Formulas/Tracing/Observers.h"
#include "Formulas/Tracing/ObservingFunctions.h"
#include "Formulas/Tracing/ValueSummary.h"
#include "Utils/WorkBudget.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::Expr;
using DOM::FormulaSyntaxTree::ExprParts;
using DOM::FormulaSyntaxTree::Node;
using DOM::FormulaSyntaxTree::NodeKind;
using DOM::FormulaSyntaxTree::Operator;

bool isNumber(TracedValue const& value) noexcept {
  return value.kind == TracedValue::Kind::Single &&
         value.value.which() == FormulaModel::FormulaValueKind::Number;
}

bool areAlike(TracedValue const& a, TracedValue const& b) {
  return a.kind == b.kind &&
         FormulaModel::FormulaValuesComarator<std::equal_to>()(a.value, b.value);
}

/// Writes the trace while the formula is evaluated.
class TraceWriter final : public ValueObserver {
public:
  TraceWriter(ExprParts const& parts, ObservedFormula const& observed, NodeChoice const& choice,
              std::vector<std::string>& texts, TraceLimits const& limits, ExprTrace& trace)
      : _parts(parts),
        _observed(observed),
        _choice(choice),
        _texts(texts),
        _mostValues(limits.firstValues),
        _trace(trace),
        _isTold(parts.nodes.size(), false),
        _isDate(parts.nodes.size(), false) {}
  ~TraceWriter() = default;

  void observe(std::uint32_t call, Value const& value) override {
    std::uint32_t const node = _observed.observedNode[call];
    if (_isTold[node]) {
      return;
    }
    _isTold[node] = true;
    TraceStep step{std::move(_texts[node]), _choice.depths[node],
                   summariseValue(value, _mostValues)};
    step.value.isDate = isNumber(step.value) && (step.value.isDate || givesDate(node));
    _isDate[node] = step.value.isDate;
    for (TraceStep const& earlier : _trace.steps) {
      if (earlier.text == step.text && areAlike(earlier.value, step.value)) {
        return;
      }
    }
    _trace.steps.push_back(std::move(step));
  }

private:
  /// Whether a number is a date because of how it came about.
  [[nodiscard]] bool givesDate(std::uint32_t node) const {
    Node const& entry = _parts.nodes[node];
    if (auto const* const traits = findTraits(entry)) {
      return traits->givesDate;
    }
    if (entry.kind != NodeKind::Binary) {
      return false;
    }
    bool const isLeftDate = _isDate[entry.firstArgument];
    bool const isRightDate = _isDate[_parts.nodes[entry.firstArgument].next];
    return (entry.op == Operator::Add && isLeftDate != isRightDate) ||
           (entry.op == Operator::Subtract && isLeftDate && !isRightDate);
  }

  ExprParts const& _parts;
  ObservedFormula const& _observed;
  NodeChoice const& _choice;
  std::vector<std::string>& _texts;
  std::size_t _mostValues;  ///< of a range or an array
  ExprTrace& _trace;
  std::vector<bool> _isTold;  ///< by node
  std::vector<bool> _isDate;  ///< by node
};

/// Sets the observer of a workspace as long as it lives.
class ObserverScope {
public:
  ObserverScope(Workspace& workspace, ValueObserver& observer) noexcept : _workspace(workspace) {
    _workspace.observer = &observer;
  }
  ObserverScope(ObserverScope const&) = delete;
  ObserverScope& operator=(ObserverScope const&) = delete;
  ~ObserverScope() { _workspace.observer = nullptr; }

private:
  Workspace& _workspace;
};

}  // namespace

ExprTrace traceExpr(Expr const& expr, int columnOffset, int rowOffset, Context const& context,
                    ContextProvider const& contextProvider, EvaluationSession& session,
                    TraceLimits const& limits) {
  ExprTrace trace;
  if (expr.getParts().nodes.empty()) {
    return trace;
  }
  auto const& table = *context.getTableContext();
  auto const shifted =
      shiftExpr(expr, table, columnOffset, rowOffset, table.getDocTableIndex(), true);
  ExprParts const& parts = shifted->getParts();
  NodeChoice const choice = chooseNodes(parts, limits);
  trace.isCut = choice.isCut;
  auto isWanted = choice.isChosen;
  isWanted.back() = true;
  auto texts = writeNodes(parts, isWanted);
  trace.text = texts.back();
  ObservedFormula const observed = addObservers(parts, choice.isChosen);
  TraceWriter writer(parts, observed, choice, texts, limits, trace);
  Workspace& workspace = session.getOrCreateWorkspace();
  ObserverScope const scope(workspace, writer);
  try {
    RuntimeDependenciesResolver nothingIsFound;
    static_cast<void>(evaluateExpr(Expr(observed.parts), Offset{}, context, contextProvider,
                                   nothingIsFound, workspace, observingFunctions()));
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (std::exception const&) {
    trace.failure = std::current_exception();
  }
  return trace;
}

}  // namespace Zorv::Formulas
