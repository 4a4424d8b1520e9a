#include "ConditionalFormatters/CndFrmt_LiveView.h"

#include "ConditionalFormatters/Live/CndFrmt_LiveViewState.h"

namespace Zorv::ConditionalFormatters {

LiveView::LiveView(LiveResolver const& resolver)
    : _state(std::make_unique<LiveViewState>(*resolver._table)) {}

LiveView::LiveView(LiveView&& other) noexcept = default;
LiveView& LiveView::operator=(LiveView&& other) noexcept = default;
LiveView::~LiveView() = default;

void LiveView::show(TableRange const& range) { _state->show(range); }

TableRange const& LiveView::getRange() const noexcept { return _state->getRange(); }

void LiveView::forget() noexcept { _state->forget(); }

void LiveView::refresh(CellVisitor const& visitor, unsigned threadCount, WorkBudget* budget) {
  _state->refresh(visitor, {threadCount, budget});
}

}  // namespace Zorv::ConditionalFormatters
