#include "visuals/VisualResolver.h"

#include "OfficeUtils/PinnedMoment.h"
#include "visuals/Prepare/PreparedVisuals.h"
#include "visuals/Prepare/VisualWalk.h"

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
  VisualWalk walk(*_prepared, OfficeUtils::PinnedMoment::readMoment(), pass.budget);
  CellVisuals const none;
  _prepared->getSources().resolver.visit(pass, [&](CF::ResolvedCell const& cell) {
    if (cell.failure != nullptr) {
      visitor({cell, none, nullptr});
      return;
    }
    CellVisuals const& visuals = walk.draw(cell.cellInfo, cell.formats);
    VisualFailure const* const failure = walk.getFailure();
    if (failure != nullptr && pass.onFailure == CF::TablePass::OnFailure::Stop) {
      std::rethrow_exception(failure->exception);
    }
    visitor({cell, visuals, failure});
  });
}

}  // namespace Zorv::Visuals
