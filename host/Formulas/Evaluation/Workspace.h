#pragma once

#include <optional>

#include "DOM/CellStore.h"
#include "Formulas/Limits/StepMeter.h"
#include "Formulas/Lookups/LookupSession.h"
#include "Formulas/Values/Arena.h"
#include "OfficeUtils/Moment.h"

namespace Zorv::Formulas {

class ValueObserver;

/// Working memory of evaluations, one after the other.
struct Workspace {
  explicit Workspace(WorkBudget* budget = nullptr) noexcept : steps(budget) {}

  StepMeter steps;
  Arena arena{steps};  ///< empty between evaluations
  /// Where the last cell of the formula's own table was found.
  DOM::CellStore::Position lastCell;
  std::optional<LookupSession> lookups;
  OfficeUtils::Moment* moment = nullptr;  ///< null: the current moment is read from the clock
  ValueObserver* observer = nullptr;      ///< of a formula that calls the observing function
};

}  // namespace Zorv::Formulas
