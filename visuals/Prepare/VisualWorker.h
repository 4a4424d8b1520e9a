#pragma once

#include <memory>

#include "ConditionalFormatters/CndFrmt_CellWorker.h"
#include "visuals/CellVisuals.h"
#include "visuals/Prepare/VisualWalk.h"

namespace Zorv::Visuals {

/// Draws the visuals of the cells that one thread of a pass resolves, and keeps them until the
/// cells are visited. Borrows everything.
class VisualWorker final : public ConditionalFormatters::CellWorker {
public:
  VisualWorker(PreparedVisuals const& visuals, PassBounds& bounds,
               ConditionalFormatters::TablePass const& pass, OfficeUtils::Clock::TimePoint moment,
               VisualVisitor const& visitor);

  [[nodiscard]] std::unique_ptr<ConditionalFormatters::BlockFindings> beginBlock() override;
  void work(ConditionalFormatters::ResolvedCell const& cell) override;

private:
  class DrawnBlock;

  VisualWalk _walk;
  VisualVisitor const& _visitor;
  DrawnBlock* _block = nullptr;  ///< the current one, owned by the pass
};

}  // namespace Zorv::Visuals
