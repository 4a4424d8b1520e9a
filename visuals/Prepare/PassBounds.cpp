#include "visuals/Prepare/PassBounds.h"

#include <new>

#include "Utils/WorkBudget.h"

namespace Zorv::Visuals {

Bounds const& PassBounds::get(std::size_t format, FormulaEvaluator& formulas) {
  std::lock_guard const lock(_mutex);
  Outcome& outcome = _outcomes[format];
  if (!outcome.bounds && !outcome.failure) {
    find(format, formulas);
  }
  if (outcome.failure) {
    std::rethrow_exception(outcome.failure);
  }
  return *outcome.bounds;
}

void PassBounds::find(std::size_t format, FormulaEvaluator& formulas) {
  try {
    _outcomes[format].bounds = _visuals.findBounds(format, formulas, _resources);
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (...) {
    _outcomes[format].failure = std::current_exception();
  }
}

}  // namespace Zorv::Visuals
