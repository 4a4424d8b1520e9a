#include "visuals/Prepare/VisualWalk.h"

#include <algorithm>
#include <limits>
#include <new>
#include <variant>

#include "Formulas/EvaluationLimitError.h"
#include "visuals/Draw/BarExtent.h"
#include "visuals/Draw/FindIcon.h"
#include "visuals/Draw/ScaleColour.h"
#include "visuals/Prepare/NumberStatistics.h"

namespace Zorv::Visuals {

namespace {

using Holding = std::span<ConditionalFormatters::FormatIndex const>;

}  // namespace

VisualWalk::VisualWalk(PreparedVisuals const& visuals, PassBounds& bounds,
                       ConditionalFormatters::TablePass const& pass,
                       OfficeUtils::Clock::TimePoint moment)
    : _visuals(visuals),
      _bounds(bounds),
      _stopsAtFailure(pass.onFailure == ConditionalFormatters::TablePass::OnFailure::Stop),
      _steps(pass.budget),
      _cursor(visuals.getRangeIndex()),
      _formulas(visuals.getSources().table,
                visuals.getSources().provider.getFormulasContextProvider(), visuals.getLookups(),
                moment, pass.budget),
      _states(visuals.countFormats()) {}

CellVisuals const& VisualWalk::draw(ConditionalFormatters::ResolvedCell const& cell) {
  _drawn = {};
  _isTaken = {};
  _failure.exception = nullptr;
  if (cell.failure == nullptr) {
    drawFormats(cell);
  }
  if (_failure.exception && _stopsAtFailure) {
    std::rethrow_exception(_failure.exception);
  }
  return _drawn;
}

void VisualWalk::drawFormats(ConditionalFormatters::ResolvedCell const& cell) {
  DOM::CellInfo const& cellInfo = cell.cellInfo;
  auto const& formats = _cursor.moveTo(cellInfo.getRowIndex(), cellInfo.getColIndex());
  if (formats.empty()) {
    return;
  }
  auto const value = findNumber(_visuals.getSources().provider.getCellValue(cellInfo));
  if (!value) {
    return;
  }
  Holding const holding = cell.formats;
  bool const isStopped = !holding.empty() && _visuals.stops(holding.back());
  std::size_t const stop = isStopped ? holding.back() : std::numeric_limits<std::size_t>::max();
  for (std::size_t const format : formats) {
    if (_visuals.getFormat(format).formatsBefore > stop) {
      break;
    }
    drawFormat(format, cellInfo.getCellIndex(), *value, holding);
    if (std::ranges::all_of(_isTaken, std::identity())) {
      break;
    }
  }
}

void VisualWalk::drawFormat(std::size_t format, CellIndex cell, double value, Holding holding) {
  VisualFormat const& record = _visuals.getFormat(format);
  bool& isTaken = _isTaken[record.kind.index()];
  if (isTaken) {
    return;
  }
  _steps.count();
  try {
    if (!record.condition || fulfilsCondition(format, cell)) {
      auto const bounds = getBounds(format);
      isTaken = true;
      give(format, value, bounds, holding);
    }
  } catch (std::bad_alloc const&) {
    throw;
  } catch (WorkEnded const&) {
    throw;
  } catch (...) {
    // A later format of the kind might be one that this one hides.
    isTaken = true;
    fail(format, std::current_exception());
  }
}

void VisualWalk::give(std::size_t format, double value, std::span<double const> bounds,
                      Holding holding) {
  VisualFormat const& record = _visuals.getFormat(format);
  if (auto const* const scale = std::get_if<ColourScale>(&record.kind)) {
    _drawn.scale = {format, findScaleColour(*scale, bounds, value),
                    isBehindFill(record.formatsBefore, holding)};
  } else if (auto const* const bar = std::get_if<DataBar>(&record.kind)) {
    _drawn.bar = {format, findBarExtent(*bar, bounds, value), value < 0, bar};
    _drawn.showValue = _drawn.showValue && bar->showValue;
  } else {
    auto const& set = std::get<IconSet>(record.kind);
    _drawn.icon = {format, findIcon(set, bounds, value)};
    _drawn.showValue = _drawn.showValue && set.showValue;
  }
}

bool VisualWalk::isBehindFill(std::size_t formatsBefore, Holding holding) const noexcept {
  return std::ranges::any_of(holding, [&](std::size_t format) {
    return format < formatsBefore && _visuals.setsFill(format);
  });
}

/// A condition that keeps meeting a limit of the engine is given up: each time it is far more work
/// than an ordinary formula.
bool VisualWalk::fulfilsCondition(std::size_t format, CellIndex cell) {
  constexpr unsigned mostLimits = 4;
  State& state = _states[format];
  if (state.limitCount >= mostLimits) {
    std::rethrow_exception(state.limit);
  }
  try {
    return _formulas.isTrue(*_visuals.getFormat(format).condition, _visuals.getBaseCell(format),
                            cell);
  } catch (Formulas::EvaluationLimitError const&) {
    state.limit = std::current_exception();
    ++state.limitCount;
    throw;
  }
}

std::span<double const> VisualWalk::getBounds(std::size_t format) {
  Bounds const*& bounds = _states[format].bounds;
  if (bounds == nullptr) {
    bounds = &_bounds.get(format, _formulas);
  }
  return bounds->get();
}

void VisualWalk::fail(std::size_t format, std::exception_ptr const& exception) {
  if (!_failure.exception) {
    _failure = {format, exception};
  }
}

}  // namespace Zorv::Visuals
