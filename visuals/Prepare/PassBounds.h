#pragma once

#include <cstddef>
#include <exception>
#include <mutex>
#include <optional>
#include <vector>

#include "ConditionalFormatters/Parallel/CndFrmt_PassResources.h"
#include "visuals/Draw/Bounds.h"
#include "visuals/Prepare/FormulaEvaluator.h"
#include "visuals/Prepare/PreparedVisuals.h"

namespace Zorv::Visuals {

/// The thresholds of one pass: all its threads see the same, also of formulas of chance (RAND).
///
/// Threads: may be asked from several threads; those that need thresholds wait while one of them
/// finds some with the resources of the pass.
class PassBounds {
public:
  /// Borrows the visuals and the budget.
  PassBounds(PreparedVisuals const& visuals, ConditionalFormatters::PassResources resources)
      : _visuals(visuals), _resources(resources), _outcomes(visuals.countFormats()) {}

  /// The thresholds of a format, found at the first call. Throws what findBounds() throws, each
  /// time the same. Valid as long as this object.
  [[nodiscard]] Bounds const& get(std::size_t format, FormulaEvaluator& formulas);

private:
  /// Nothing yet, the thresholds, or why there are none.
  struct Outcome {
    std::optional<Bounds> bounds;
    std::exception_ptr failure;
  };

  void find(std::size_t format, FormulaEvaluator& formulas);

  PreparedVisuals const& _visuals;
  ConditionalFormatters::PassResources _resources;
  std::mutex _mutex;               ///< guards what follows; found thresholds do not change
  std::vector<Outcome> _outcomes;  ///< by format
};

}  // namespace Zorv::Visuals
