#include "visuals/Prepare/VisualWorker.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace Zorv::Visuals {

namespace CF = ConditionalFormatters;

/// The visuals of a block's cells. Most cells have none, or all of them have: so those that do are
/// kept with the index of their cell.
class VisualWorker::DrawnBlock final : public CF::BlockFindings {
public:
  explicit DrawnBlock(VisualVisitor const& visitor) : _visitor(visitor) {}

  void add(CellVisuals const& visuals, VisualFailure const* failure) {
    if (failure != nullptr) {
      _failures.emplace_back(_count, *failure);
    }
    if (!visuals.isEmpty()) {
      _drawn.emplace_back(_count, visuals);
    }
    ++_count;
  }

  void visit(CF::ResolvedCell const& cell) override {
    static CellVisuals const none;
    auto const* const drawn = takeNext(_drawn, _nextDrawn);
    auto const* const failure = takeNext(_failures, _nextFailure);
    ++_visited;
    _visitor({cell, drawn != nullptr ? *drawn : none, failure});
  }

private:
  template <class Item>
  using OfCells = std::vector<std::pair<std::size_t, Item>>;

  /// The item of the cell that is visited, or null.
  template <class Item>
  Item const* takeNext(OfCells<Item> const& items, std::size_t& next) const noexcept {
    return next < items.size() && items[next].first == _visited ? &items[next++].second : nullptr;
  }

  VisualVisitor const& _visitor;
  OfCells<CellVisuals> _drawn;  ///< by the index of the cell in the block, ascending
  OfCells<VisualFailure> _failures;
  std::size_t _count = 0;
  std::size_t _visited = 0;
  std::size_t _nextDrawn = 0;
  std::size_t _nextFailure = 0;
};

VisualWorker::VisualWorker(PreparedVisuals const& visuals, PassBounds& bounds,
                           CF::TablePass const& pass, OfficeUtils::Clock::TimePoint moment,
                           VisualVisitor const& visitor)
    : _walk(visuals, bounds, pass, moment), _visitor(visitor) {}

std::unique_ptr<CF::BlockFindings> VisualWorker::beginBlock() {
  auto block = std::make_unique<DrawnBlock>(_visitor);
  _block = block.get();
  return block;
}

void VisualWorker::work(CF::ResolvedCell const& cell) {
  CellVisuals const& visuals = _walk.draw(cell);
  _block->add(visuals, _walk.getFailure());
}

}  // namespace Zorv::Visuals
