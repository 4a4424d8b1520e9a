#pragma once

#include <optional>

#include "DOM/CellStore.h"
#include "Formulas/Evaluation/Arena.h"
#include "Formulas/Lookups/LookupSession.h"
#include "OfficeUtils/Moment.h"

namespace Zorv::Formulas {

/// What evaluations work with, one after the other.
struct Workspace {
  Arena arena;  ///< empty between evaluations
  /// Where the last cell of the formula's own table was found.
  DOM::CellStore::Position lastCell;
  std::optional<LookupSession> lookups;
  OfficeUtils::Moment* moment = nullptr;  ///< null: the clock tells the current moment
};

}  // namespace Zorv::Formulas
