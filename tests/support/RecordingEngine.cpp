#include "support/RecordingEngine.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "Formulas/CalcShiftedExpr.h"
#include "Formulas/CriterionText.h"
#include "Formulas/EvaluationSession.h"
#include "Formulas/FindDependencies.h"
#include "Formulas/FoldExpr.h"
#include "Formulas/LookupCache.h"
#include "Formulas/PositionDependence.h"
#include "Formulas/ShiftExpr.h"

namespace Zorv::TestSupport {

namespace {

std::atomic<RecordingEngine*> engineInForce = nullptr;

[[noreturn]] void fail(char const* message) {
  std::fprintf(stderr, "RecordingEngine: %s\n", message);
  std::abort();
}

}  // namespace

RecordingEngine::RecordingEngine(Journal& journal)
    : _journal(journal),
      _calcAnswer([](CalcCall const&) { return FormulaValue(); }),
      _shiftAnswer([](ShiftCall const& call) { return std::make_unique<Expr>(*call.expr); }) {
  if (engineInForce.exchange(this) != nullptr) {
    fail("two engines in force");
  }
}

RecordingEngine::~RecordingEngine() { engineInForce = nullptr; }

RecordingEngine& RecordingEngine::getInForce() {
  RecordingEngine* const engine = engineInForce;
  if (engine == nullptr) {
    fail("a formula is evaluated without an engine in force");
  }
  return *engine;
}

void RecordingEngine::answer(Formulas::CalcResult result) {
  answerBy([result = std::move(result)](CalcCall const&) { return result; });
}

void RecordingEngine::answerFor(Expr const& expr, Formulas::CalcResult result) {
  _answersByOrigin[&expr] = std::move(result);
}

Formulas::CalcResult RecordingEngine::calc(CalcCall call) {
  _journal.note("calcExpr(" + std::to_string(call.row) + "," + std::to_string(call.column) + ")");
  {
    std::lock_guard const lock(_mutex);
    auto const origin = _origins.find(call.expr);
    call.origin = origin == _origins.end() ? call.expr : origin->second;
    _calcCalls.push_back(call);
  }
  auto const answer = _answersByOrigin.find(call.origin);
  return answer == _answersByOrigin.end() ? _calcAnswer(call) : answer->second;
}

std::unique_ptr<Expr> RecordingEngine::shift(ShiftCall const& call) {
  _journal.note("shiftExpr(" + std::to_string(call.columnOffset) + "," +
                std::to_string(call.rowOffset) + ")");
  {
    std::lock_guard const lock(_mutex);
    _shiftCalls.push_back(call);
  }
  auto shifted = _shiftAnswer(call);
  std::lock_guard const lock(_mutex);
  _origins[shifted.get()] = call.expr;
  return shifted;
}

Formulas::CalcResult makeArrayResult(std::size_t height, std::size_t width,
                                     std::vector<FormulaValue> values) {
  return std::make_shared<FormulaModel::FormulaArray const>(height, width, std::move(values));
}

Formulas::CalcResult makeNullArrayResult() {
  return std::shared_ptr<FormulaModel::FormulaArray const>();
}

Formulas::CalcResult makeReferenceListResult() {
  return std::vector{std::make_shared<Formulas::Reference const>(),
                     std::make_shared<Formulas::Reference const>()};
}

Formulas::CalcResult makeReferenceResult() { return std::make_shared<Formulas::Reference const>(); }

}  // namespace Zorv::TestSupport

namespace Zorv::Formulas {

struct Workspace {};
class LookupStore {};

LookupCache::LookupCache() = default;
LookupCache::~LookupCache() = default;
void LookupCache::follow(FollowedAreas const& /*areas*/) noexcept {}
void LookupCache::valuesChanged(DOM::Table const& /*table*/,
                                std::span<TableRange const> /*areas*/) {}

CriterionText readCriterionText(std::string_view text,
                                OfficeUtils::LocaleContext const& /*locale*/) {
  return std::string(text);
}

EvaluationSession::EvaluationSession() noexcept = default;
EvaluationSession::EvaluationSession(LookupCache& lookups) noexcept : _lookups(&lookups) {}
EvaluationSession::EvaluationSession(LookupCache& lookups, OfficeUtils::Moment& moment) noexcept
    : _lookups(&lookups), _moment(&moment) {}
EvaluationSession::~EvaluationSession() = default;

CalcResult calcExpr(DOM::FormulaSyntaxTree::Expr const& expr, Context const& context,
                    ContextProvider const& contextProvider, RuntimeDependenciesResolver& resolver) {
  auto const result = TestSupport::RecordingEngine::getInForce().calc({
      .expr = &expr,
      .origin = nullptr,
      .tableContext = context.getTableContext(),
      .row = context.getRow().get(),
      .column = context.getColumn().get(),
      .asArrayFormula = context.getArrayFormulaIndices().has_value(),
      .rowID = context.getRowID().get(),
      .columnID = context.getColumnID().get(),
      .contextProvider = &contextProvider,
      .resolver = &resolver,
      .resolverIsEmpty = resolver.getDependencies().empty(),
  });
  // What is found here must not be found again by a later evaluation.
  resolver.add(FormulaModel::DocTableIndex(0), {0, 0, 1, 1});
  return result;
}

Dependencies findDependencies(DOM::FormulaSyntaxTree::Expr const& /*expr*/,
                              TableContext const& /*tableContext*/,
                              ContextProvider const& /*contextProvider*/) {
  Dependencies anything;
  anything.onAnyCell = true;
  return anything;
}

PositionDependence findPositionDependence(DOM::FormulaSyntaxTree::Expr const& /*expr*/) {
  return {.row = true, .column = true};
}

std::unique_ptr<DOM::FormulaSyntaxTree::Expr> shiftExpr(DOM::FormulaSyntaxTree::Expr const& expr,
                                                        TableContext const& tableContext,
                                                        int columnOffset, int rowOffset,
                                                        FormulaModel::DocTableIndex table,
                                                        bool wrapAround) {
  return TestSupport::RecordingEngine::getInForce().shift({
      .expr = &expr,
      .tableContext = &tableContext,
      .columnOffset = columnOffset,
      .rowOffset = rowOffset,
      .table = table.get(),
      .wrapAround = wrapAround,
  });
}

std::optional<DOM::FormulaSyntaxTree::Expr> foldExpr(DOM::FormulaSyntaxTree::Expr const& /*expr*/,
                                                     Context const& /*context*/,
                                                     ContextProvider const& /*contextProvider*/,
                                                     EvaluationSession& /*session*/) {
  return std::nullopt;
}

CalcResult calcShiftedExpr(DOM::FormulaSyntaxTree::Expr const& expr, int columnOffset,
                           int rowOffset, Context const& context,
                           ContextProvider const& contextProvider,
                           RuntimeDependenciesResolver& resolver, EvaluationSession& /*session*/) {
  auto const& tableContext = *context.getTableContext();
  auto const shifted =
      shiftExpr(expr, tableContext, columnOffset, rowOffset, tableContext.getDocTableIndex(), true);
  return calcExpr(*shifted, context, contextProvider, resolver);
}

}  // namespace Zorv::Formulas
