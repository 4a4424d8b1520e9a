#pragma once

namespace Zorv {
class WorkBudget;
}  // namespace Zorv

namespace Zorv::ConditionalFormatters {

/// Resources that a pass may use.
struct PassResources {
  unsigned threadCount = 1;      ///< threads that share the work, the caller's among them
  WorkBudget* budget = nullptr;  ///< what the work may cost; null: anything
};

}  // namespace Zorv::ConditionalFormatters
