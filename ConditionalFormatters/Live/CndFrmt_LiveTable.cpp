#include "ConditionalFormatters/Live/CndFrmt_LiveTable.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include "ConditionalFormatters/Live/CndFrmt_Days.h"
#include "ConditionalFormatters/Live/CndFrmt_FewAreas.h"
#include "DOM/Table.h"
#include "Formulas/ContextProvider.h"
#include "OfficeUtils/PinnedMoment.h"

namespace Zorv::ConditionalFormatters {

namespace {

using OfficeUtils::Clock;

/// Most areas that are told of a change.
constexpr std::size_t mostToldAreas = 16;
/// Most areas of changed cells for which values are read again, and for which references are tried.
constexpr std::size_t mostReadAreas = 16'384;
constexpr std::size_t mostTriedAreas = 64;

constexpr TableRange wholeSheet{0, 0, DOM::Table::rowCount, DOM::Table::columnCount};

/// The cells that stand elsewhere, or are others, after an edit of lines.
TableRange findZone(LinesChanged const& lines) noexcept {
  bool const isMove = lines.edit == LineEdit::Move;
  unsigned long const first = isMove ? std::min(lines.first, lines.before) : lines.first;
  unsigned long const end = std::max(lines.first + lines.count, lines.before);
  TableRange zone = wholeSheet;
  if (lines.axis == Axis::Rows) {
    zone.firstRow = first;
    zone.endRow = isMove ? end : zone.endRow;
  } else {
    zone.firstColumn = first;
    zone.endColumn = isMove ? end : zone.endColumn;
  }
  return zone;
}

void addEdit(LinesChanged const& lines, SheetMoves& moves) {
  AxisEdit::Kind const kind = lines.edit == LineEdit::Insert   ? AxisEdit::Kind::Insert
                              : lines.edit == LineEdit::Delete ? AxisEdit::Kind::Delete
                                                               : AxisEdit::Kind::Move;
  LineMoves& ofAxis = lines.axis == Axis::Rows ? moves.rows : moves.columns;
  ofAxis.add({kind, lines.first, lines.count, lines.before});
}

/// Summary of changes, for a table that is followed.
class ChangeSummary {
public:
  ChangeSummary(std::span<Change const> changes, DOM::Table const& own) : _own(own) {
    for (Change const& change : changes) {
      std::visit([this](auto const& each) { add(each); }, change);
    }
    for (std::size_t index = 0; index < _cells.size(); ++index) {
      ChangedCells& cells = _cells[index];
      if (!cells.moved.empty()) {
        appendAll(_carried[index], cells.areas);
      }
      std::vector<TableRange> all = cells.areas;
      appendAll(cells.moved, all);
      cells.areas = joinIntoFew(cells.areas, mostReadAreas);
      cells.moved = joinIntoFew(cells.moved, mostTriedAreas);
      cells.fewAreas = joinIntoFew(all, mostTriedAreas);
    }
  }

  /// Anything may have changed, or the table's list of formats.
  [[nodiscard]] bool changesFormats() const noexcept { return _changesFormats; }
  /// Anything may have changed.
  [[nodiscard]] bool changesAnything() const noexcept { return _changesAnything; }
  /// By table. Cells that stand elsewhere are among them.
  [[nodiscard]] std::vector<ChangedCells> const& getCells() const noexcept { return _cells; }
  /// Where rows and columns of the table itself changed.
  [[nodiscard]] std::vector<TableRange> const& getZones() const noexcept { return _zones; }
  /// Edits of rows and columns.
  [[nodiscard]] DocumentMoves const& getMoves() const noexcept { return _moves; }

private:
  void add(ValuesChanged const& values) {
    std::size_t const index = indexOf(values.table);
    appendAll(values.areas, _cells[index].areas);
    appendAll(values.areas, _carried[index]);
  }
  void add(LinesChanged const& lines) {
    TableRange const zone = findZone(lines);
    std::size_t const index = indexOf(lines.table);
    if (lines.table != nullptr) {
      addEdit(lines, _moves.getOrCreate(*lines.table));
    }
    carry(lines, _carried[index]);
    _cells[index].moved.push_back(zone);
    if (lines.table == &_own) {
      _zones.push_back(zone);
    }
  }
  /// Moves areas to where an edit puts their cells.
  static void carry(LinesChanged const& lines, std::vector<TableRange>& areas) {
    SheetMoves moves;
    addEdit(lines, moves);
    std::vector<TableRange> carried;
    for (TableRange const& area : areas) {
      moves.appendMoved(area, carried);
    }
    areas = joinIntoFew(carried, mostReadAreas);
  }
  void add(FormatsChanged const& formats) noexcept {
    _changesFormats = _changesFormats || formats.table == &_own;
  }
  void add(AnythingChanged const& /*anything*/) noexcept {
    _changesFormats = true;
    _changesAnything = true;
  }

  std::size_t indexOf(DOM::Table const* table) {
    auto const found = std::ranges::find(_cells, table, &ChangedCells::table);
    if (found == _cells.end()) {
      _cells.emplace_back();
      _cells.back().table = table;
      _carried.emplace_back();
      return _cells.size() - 1;
    }
    return static_cast<std::size_t>(found - _cells.begin());
  }

  DOM::Table const& _own;
  bool _changesFormats = false;
  bool _changesAnything = false;
  std::vector<ChangedCells> _cells;
  DocumentMoves _moves;
  /// By table, areas of values where later edits of lines put them: hosts that gather changes may
  /// tell the positions that a cell had before.
  std::vector<std::vector<TableRange>> _carried;
  std::vector<TableRange> _zones;
};

Clock::TimePoint findNextSecond(Clock::TimePoint moment) noexcept {
  return std::chrono::floor<std::chrono::seconds>(moment) + std::chrono::seconds(1);
}

}  // namespace

LiveTable::LiveTable(LiveSources const& sources)
    : _sources(sources), _moment(OfficeUtils::PinnedMoment::readMoment()) {
  static_cast<void>(getFormats());
}

FollowedFormats& LiveTable::getFormats() const {
  return *_formats.getOrCreate(_creation, [&] {
    return std::make_unique<std::shared_ptr<FollowedFormats> const>(
        std::make_shared<FollowedFormats>(_sources));
  });
}

std::shared_ptr<PreparedTable const> LiveTable::getPrepared() const {
  static_cast<void>(getFormats());
  std::shared_ptr<FollowedFormats> const& formats = *_formats.find();
  return {formats, &formats->getPrepared()};
}

std::vector<TableRange> LiveTable::apply(std::span<Change const> changes) {
  try {
    return followAll(changes);
  } catch (...) {
    forget();
    throw;
  }
}

bool LiveTable::prepareSome(std::chrono::microseconds budget) {
  try {
    return getFormats().prepareSome(budget);
  } catch (...) {
    forget();
    throw;
  }
}

std::vector<TableRange> LiveTable::followAll(std::span<Change const> changes) {
  Clock::TimePoint const moment = OfficeUtils::PinnedMoment::readMoment();
  std::vector<TableRange> areas;
  ReachedAreas reached;
  if (!_isLost) {
    reached = follow(changes);
    appendChangesOfTime(_moment, moment, reached.areas);
    reached.areas = joinIntoFew(reached.areas, mostToldAreas);
    areas = reached.areas;
    for (NumberArea const& numbers : reached.numbers) {
      areas.push_back(numbers.area);
    }
    for (ClassArea const& classes : reached.classes) {
      areas.push_back(classes.area);
    }
    areas = joinIntoFew(areas, mostToldAreas);
  }
  if (_isLost || (_checker && !_checker->check(getFormats(), areas))) {
    areas = startAnew();
    reached = {areas, {}, {}};
  }
  _log.add(std::move(reached));
  _moment = moment;
  _isLost = false;
  return areas;
}

ReachedAreas LiveTable::follow(std::span<Change const> changes) {
  ReachedAreas reached;
  ChangeSummary const summary(changes, _sources.table);
  if (!summary.changesFormats() && summary.getZones().empty()) {
    getFormats().linesChanged(summary.getMoves());
    getFormats().followValues(summary.getCells(), reached);
    return reached;
  }
  std::shared_ptr<FollowedFormats> const before = *_formats.find();
  _formats.reset();
  if (_checker) {
    _checker->forgetCells();
  }
  FollowedFormats& after = getFormats();
  if (!summary.changesAnything()) {
    after.takeOver(*before, summary.getMoves());
  }
  if (summary.changesFormats() || before->getRefs().size() != after.getRefs().size()) {
    before->appendRanges(reached.areas);
    after.appendRanges(reached.areas);
  } else {
    after.followLines(*before, summary.getZones(), reached.areas);
  }
  if (!summary.changesAnything()) {
    after.followValues(summary.getCells(), reached);
  }
  return reached;
}

std::vector<TableRange> LiveTable::startAnew() {
  _formats.reset();
  if (_checker) {
    _checker->forgetCells();
  }
  static_cast<void>(getFormats());
  return {wholeSheet};
}

void LiveTable::forget() noexcept {
  _formats.reset();
  _isLost = true;
  _log.addEverything();
}

std::optional<Clock::TimePoint> LiveTable::nextChange() const {
  auto const& all = getFormats().getOrFindDependencies();
  auto const any = [&](auto const& test) {
    return std::ranges::any_of(all, [&](auto const& each) { return each && test(*each); });
  };
  if (any([](FormatDependencies const& each) { return each.areOnMoment(); })) {
    return findNextSecond(_moment);
  }
  if (any([](FormatDependencies const& each) { return each.areOnDay(); })) {
    auto const& formulas = _sources.provider.getFormulasContextProvider();
    return std::min(findNextDay(_moment, _sources.provider.getTimeZone()),
                    findNextDay(_moment, formulas.getTimeZone()));
  }
  return std::nullopt;
}

void LiveTable::appendChangesOfTime(Clock::TimePoint from, Clock::TimePoint to,
                                    std::vector<TableRange>& areas) const {
  auto const& provider = _sources.provider;
  FollowedFormats const& formats = getFormats();
  auto const& all = formats.getOrFindDependencies();
  bool const isOtherDay =
      !areOnOneDay(from, to, provider.getTimeZone()) ||
      !areOnOneDay(from, to, provider.getFormulasContextProvider().getTimeZone());
  for (FormatIndex format = 0; format < all.size(); ++format) {
    if (all[format] && (all[format]->areOnMoment() || (all[format]->areOnDay() && isOtherDay))) {
      auto const& ranges = formats.getRanges(format);
      areas.insert(areas.end(), ranges.begin(), ranges.end());
    }
  }
}

}  // namespace Zorv::ConditionalFormatters
