#include "visuals/VisualResolver.h"

#include "OfficeUtils/PinnedMoment.h"
#include "visuals/Prepare/PassBounds.h"
#include "visuals/Prepare/PreparedVisuals.h"
#include "visuals/Prepare/VisualWalk.h"
#include "visuals/Prepare/VisualWorker.h"

namespace Zorv::Visuals {

namespace CF = ConditionalFormatters;

VisualResolver::VisualResolver(VisualSources const& sources)
    : _prepared(std::make_unique<PreparedVisuals const>(sources)) {}

VisualResolver::VisualResolver(VisualResolver&& other) noexcept = default;
VisualResolver& VisualResolver::operator=(VisualResolver&& other) noexcept = default;
VisualResolver::~VisualResolver() = default;

CellVisuals VisualResolver::resolve(DOM::CellInfo const& cellInfo) const {
  CellVisuals visuals;
  CF::TablePass const pass{.range = {cellInfo.getRowIndex(), cellInfo.getColIndex(),
                                     cellInfo.getRowIndex() + 1, cellInfo.getColIndex() + 1},
                           .positions = CF::TablePass::Positions::All};
  visit(pass, [&](VisualCell const& cell) { visuals = cell.visuals; });
  return visuals;
}

void VisualResolver::visit(CF::TablePass const& pass, VisualVisitor const& visitor) const {
  auto const moment = OfficeUtils::PinnedMoment::readMoment();
  PassBounds bounds(*_prepared, {pass.threadCount, pass.budget});
  CF::TableResolver const& resolver = _prepared->getSources().resolver;
  if (pass.threadCount > 1) {
    resolver.visitWithWorkers(pass, [&]() -> std::unique_ptr<CF::CellWorker> {
      return std::make_unique<VisualWorker>(*_prepared, bounds, pass, moment, visitor);
    });
    return;
  }
  VisualWalk walk(*_prepared, bounds, pass, moment);
  resolver.visit(pass, [&](CF::ResolvedCell const& cell) {
    CellVisuals const& visuals = walk.draw(cell);
    visitor({cell, visuals, walk.getFailure()});
  });
}

}  // namespace Zorv::Visuals
