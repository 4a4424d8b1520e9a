#pragma once

#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

#include "DOM/FormulaSyntaxTree/Expr.h"
#include "Formulas/CalcExpr.h"
#include "support/Journal.h"

namespace Zorv::TestSupport {

using DOM::FormulaSyntaxTree::Expr;

/// Arguments of a call of calcExpr().
struct CalcCall {
  Expr const* expr;
  Expr const* origin;  ///< the expression that was shifted to give `expr`; `expr` itself otherwise
  Formulas::TableContext const* tableContext;
  unsigned long row;
  unsigned long column;
  bool asArrayFormula;
  unsigned long rowID;
  unsigned long columnID;
  Formulas::ContextProvider const* contextProvider;
  Formulas::RuntimeDependenciesResolver const* resolver;
  bool resolverIsEmpty;
};

/// Arguments of a call of shiftExpr().
struct ShiftCall {
  Expr const* expr;
  Formulas::TableContext const* tableContext;
  int columnOffset;
  int rowOffset;
  unsigned long table;
  bool wrapAround;
};

/// A double of the formula engine: the functions calcExpr() and shiftExpr() that come with it are
/// linked in place of the real ones, and answer as the RecordingEngine in force says.
///
/// One is in force at a time, from its construction to its destruction; without one the functions
/// stop the process. Unless told otherwise calcExpr() gives the empty value and shiftExpr() a copy.
/// Notes "calcExpr(ROW,COLUMN)" and "shiftExpr(COLUMNS,ROWS)" in the journal. The functions may be
/// called from several threads; everything else belongs to the test's thread.
class RecordingEngine {
public:
  using CalcAnswer = std::function<Formulas::CalcResult(CalcCall const&)>;
  using ShiftAnswer = std::function<std::unique_ptr<Expr>(ShiftCall const&)>;

  explicit RecordingEngine(Journal& journal);
  RecordingEngine(RecordingEngine const&) = delete;
  RecordingEngine& operator=(RecordingEngine const&) = delete;
  ~RecordingEngine();

  /// Every evaluation gives this.
  void answer(Formulas::CalcResult result);
  /// Every evaluation of an expression, shifted or not, gives this, whatever the others give.
  void answerFor(Expr const& expr, Formulas::CalcResult result);
  /// Every evaluation gives what the function returns or throws.
  void answerBy(CalcAnswer answer) { _calcAnswer = std::move(answer); }
  /// Every shift gives what the function returns or throws.
  void shiftBy(ShiftAnswer answer) { _shiftAnswer = std::move(answer); }

  [[nodiscard]] std::vector<CalcCall> const& getCalcCalls() const noexcept { return _calcCalls; }
  [[nodiscard]] std::vector<ShiftCall> const& getShiftCalls() const noexcept { return _shiftCalls; }

  // For the functions that stand in for the engine's.
  [[nodiscard]] static RecordingEngine& getInForce();
  [[nodiscard]] Formulas::CalcResult calc(CalcCall call);
  [[nodiscard]] std::unique_ptr<Expr> shift(ShiftCall const& call);

private:
  Journal& _journal;
  CalcAnswer _calcAnswer;
  ShiftAnswer _shiftAnswer;
  std::map<Expr const*, Formulas::CalcResult> _answersByOrigin;
  std::mutex _mutex;
  std::map<Expr const*, Expr const*> _origins;
  std::vector<CalcCall> _calcCalls;
  std::vector<ShiftCall> _shiftCalls;
};

/// A result that is an array with these values, row by row.
[[nodiscard]] Formulas::CalcResult makeArrayResult(std::size_t height, std::size_t width,
                                                   std::vector<FormulaValue> values);
/// A result that is an array pointer without an array.
[[nodiscard]] Formulas::CalcResult makeNullArrayResult();
/// The two kinds of result that carry no value.
[[nodiscard]] Formulas::CalcResult makeReferenceListResult();
[[nodiscard]] Formulas::CalcResult makeReferenceResult();

}  // namespace Zorv::TestSupport
