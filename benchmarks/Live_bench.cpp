// Documents that are edited: what an edit and the view after it cost, by a resolver that follows
// changes and by a new one for each edit. Twelve rules of all kinds over one column, or over ten
// columns that are edited, 2,000 cells in sight.

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <random>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>
#include <boost/variant/get.hpp>

#include "BenchTable.h"
#include "Benchmarks.h"
#include "ConditionalFormatters/CndFrmt_Change.h"
#include "ConditionalFormatters/CndFrmt_ConditionalFormattingPropsCalculator.h"
#include "ConditionalFormatters/CndFrmt_LiveResolver.h"
#include "ConditionalFormatters/CndFrmt_LiveView.h"
#include "ConditionalFormatters/CndFrmt_TableResolver.h"
#include "DOM/ConditionalFormatOperator.h"
#include "Formulas/ParseExpr.h"

namespace Zorv::Benchmarks {

namespace {

using ConditionalFormatters::LiveResolver;
using ConditionalFormatters::LiveView;
using ConditionalFormatters::ResolvedCell;

constexpr unsigned long viewedCells = 2'000;

/// How edits come.
struct EditKind {
  char const* name;
  std::size_t cellCount;      ///< of one edit, one below the other
  double unit;                ///< numbers are multiples of it
  bool withFormulas = false;  ///< beside the twelve rules, seven with formulas of the column
  bool withSums = false;      ///< besides, sums of the column by a thousand numbers in the next one
  bool ofNumbersToSumBy = false;  ///< these are edited: one in five becomes empty
  bool withHundreds = false;      ///< beside the twelve rules, three hundred with formulas
};

constexpr std::size_t differentNumbersToSumBy = 1'000;

void addSumsByNextColumn(BenchTable& table) {
  for (std::size_t row = 0; row < table.getCellCount(); ++row) {
    auto const number = static_cast<double>(row % differentNumbersToSumBy);
    table.getTable().setValue(row, 1, FormulaModel::FormulaNumber{FloatNumber(number)});
  }
  table.addFormat(DOM::UnaryConditionalFormatOperator(
      DOM::UnaryConditionalFormatType::FormulaIsTrue,
      Formulas::parseExpr("SUMIF($B:$B,$B1,$A:$A)>SUM($A:$A)/1000")));
}

void addHundredsOfFormulas(BenchTable& table) {
  for (int index = 1; index <= 100; ++index) {
    std::string const number = std::to_string(index);
    for (std::string const& formula :
         {"A1>AVERAGE($A:$A)*1." + number, "AND(COUNTIF($A:$A,A1)>2,A1<" + number + "00)",
          "$A1=\"Item " + number + "\""}) {
      table.addFormat(DOM::UnaryConditionalFormatOperator(
          DOM::UnaryConditionalFormatType::FormulaIsTrue, Formulas::parseExpr(formula)));
    }
  }
}

/// A column under twelve rules, and random edits of it.
class EditedColumn {
public:
  EditedColumn(std::size_t cellCount, EditKind const& kind) : _kind(kind), _table(cellCount) {
    if (kind.unit != 1) {
      for (unsigned long row = 0; row < cellCount; ++row) {
        edit(row);
      }
    }
    addTwelve(_table);
    if (kind.withFormulas) {
      addSevenFormulas(_table);
    }
    if (kind.withHundreds) {
      addHundredsOfFormulas(_table);
    }
    if (kind.withSums) {
      addSumsByNextColumn(_table);
    }
    _table.makeCalculator();
  }

  [[nodiscard]] BenchTable const& getTable() const noexcept { return _table; }
  [[nodiscard]] TableRange getView() const noexcept {
    unsigned long const firstRow = _table.getCellCount() / 2;
    return {firstRow, 0, firstRow + viewedCells, 1};
  }

  /// Sets the next cells, and gives their area.
  TableRange edit() {
    std::size_t const first = _random() % (_table.getCellCount() - _kind.cellCount);
    for (std::size_t row = first; row < first + _kind.cellCount; ++row) {
      _kind.ofNumbersToSumBy ? editNumberToSumBy(row) : edit(row);
    }
    unsigned long const column = _kind.ofNumbersToSumBy ? 1 : 0;
    return {first, column, first + _kind.cellCount, column + 1};
  }

private:
  void edit(unsigned long row) {
    auto const drawn = static_cast<double>(_random() % _table.getCellCount());
    _table.setValue(
        row, _random() % 5 == 0
                 ? FormulaValue(FormulaModel::FormulaString{
                       "Item " + std::to_string(static_cast<long>(drawn))})
                 : FormulaValue(FormulaModel::FormulaNumber{FloatNumber(drawn * _kind.unit)}));
  }

  void editNumberToSumBy(unsigned long row) {
    if (_random() % 5 == 0) {
      _table.getTable().removeCell(row, 1);
    } else {
      auto const number = static_cast<double>(_random() % differentNumbersToSumBy);
      _table.getTable().setValue(row, 1, FormulaModel::FormulaNumber{FloatNumber(number)});
    }
  }

  EditKind _kind;
  BenchTable _table;
  std::mt19937 _random{1};
};

/// Prepares what follows edits in slices of ten milliseconds. Gives the longest in milliseconds of
/// processor time.
double prepareInSlices(LiveResolver& resolver) {
  constexpr double ticksOfMillisecond = CLOCKS_PER_SEC / 1e3;
  double longest = 0;
  for (bool hasMore = true; hasMore;) {
    std::clock_t const start = std::clock();
    hasMore = resolver.prepareSome(std::chrono::milliseconds(10));
    longest = std::max(longest, static_cast<double>(std::clock() - start) / ticksOfMillisecond);
  }
  return longest;
}

/// An edit, and the cells in sight that look different, by a resolver that follows changes.
void measureFollowedEdit(benchmark::State& state, EditKind const& kind) {
  EditedColumn column(static_cast<std::size_t>(state.range(0)), kind);
  BenchTable const& table = column.getTable();
  LiveResolver resolver = table.getCalculator().follow(table.getStyles(), table.getTable());
  LiveView view(resolver);
  view.show(column.getView());
  std::size_t visited = 0;
  auto const paint = [&](ResolvedCell const& /*cell*/) { ++visited; };
  view.refresh(paint);
  state.counters["longestSlice"] = prepareInSlices(resolver);
  for (auto _ : state) {
    TableRange const area = column.edit();
    benchmark::DoNotOptimize(
        resolver.apply({ConditionalFormatters::ValuesChanged{&table.getTable(), {area}}}));
    view.refresh(paint);
  }
  benchmark::DoNotOptimize(visited);
}

/// The same by a new resolver for each edit, which visits all cells in sight.
void measureEditAnew(benchmark::State& state, EditKind const& kind) {
  EditedColumn column(static_cast<std::size_t>(state.range(0)), kind);
  BenchTable const& table = column.getTable();
  std::size_t holding = 0;
  for (auto _ : state) {
    benchmark::DoNotOptimize(column.edit());
    auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
    resolver.visit({.range = column.getView()},
                   [&](ResolvedCell const& cell) { holding += cell.formats.size(); });
  }
  benchmark::DoNotOptimize(holding);
}

/// Moves the view down by some rows, and tells the cells that come into sight.
void measureScroll(benchmark::State& state, EditKind const& kind, unsigned long rows,
                   unsigned threadCount = 1) {
  EditedColumn column(static_cast<std::size_t>(state.range(0)), kind);
  BenchTable const& table = column.getTable();
  LiveResolver resolver = table.getCalculator().follow(table.getStyles(), table.getTable());
  LiveView view(resolver);
  std::size_t visited = 0;
  auto const paint = [&](ResolvedCell const& /*cell*/) { ++visited; };
  TableRange inSight{0, 0, viewedCells, 1};
  view.show(inSight);
  view.refresh(paint);
  static_cast<void>(prepareInSlices(resolver));
  for (auto _ : state) {
    unsigned long const step = inSight.endRow + rows <= table.getCellCount() ? rows : 0;
    inSight.firstRow = step == 0 ? 0 : inSight.firstRow + step;
    inSight.endRow = inSight.firstRow + viewedCells;
    view.show(inSight);
    view.refresh(paint, threadCount);
  }
  benchmark::DoNotOptimize(visited);
}

/// The same by a new resolver each time, which visits all cells in sight.
void measureScrollAnew(benchmark::State& state, EditKind const& kind, unsigned long rows) {
  EditedColumn column(static_cast<std::size_t>(state.range(0)), kind);
  BenchTable const& table = column.getTable();
  std::size_t holding = 0;
  TableRange inSight{0, 0, viewedCells, 1};
  for (auto _ : state) {
    unsigned long const step = inSight.endRow + rows <= table.getCellCount() ? rows : 0;
    inSight.firstRow = step == 0 ? 0 : inSight.firstRow + step;
    inSight.endRow = inSight.firstRow + viewedCells;
    auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
    resolver.visit({.range = inSight},
                   [&](ResolvedCell const& cell) { holding += cell.formats.size(); });
  }
  benchmark::DoNotOptimize(holding);
}

/// An edit of the document's rows, columns or formats, which is told.
using DocumentEdit = ConditionalFormatters::Change (*)(BenchTable& table, std::size_t number);

/// A kind of such edits, of a table with some columns.
struct DocumentEditKind {
  char const* name;
  DocumentEdit edit;
  unsigned long columnCount = 1;
};

ConditionalFormatters::LinesChanged toldLines(BenchTable const& table,
                                              ConditionalFormatters::Axis axis,
                                              ConditionalFormatters::LineEdit edit,
                                              unsigned long first, unsigned long before = 0) {
  return {.table = &table.getTable(),
          .axis = axis,
          .edit = edit,
          .first = first,
          .count = 1,
          .before = before};
}

/// Inserts a row in one place after another, and then deletes it.
ConditionalFormatters::Change insertOrDeleteRow(BenchTable& table, std::size_t number) {
  unsigned long const row = (number / 2 + 1) * 7'919 % table.getCellCount();
  bool const isInsertion = number % 2 == 0;
  isInsertion ? table.getTable().insertRows(row, 1) : table.getTable().deleteRows(row, 1);
  return toldLines(table, ConditionalFormatters::Axis::Rows,
                   isInsertion ? ConditionalFormatters::LineEdit::Insert
                               : ConditionalFormatters::LineEdit::Delete,
                   row);
}

ConditionalFormatters::Change moveRow(BenchTable& table, std::size_t number) {
  unsigned long const before = (number + 1) * 7'919 % table.getCellCount();
  table.getTable().moveRows(1, 1, before);
  return toldLines(table, ConditionalFormatters::Axis::Rows, ConditionalFormatters::LineEdit::Move,
                   1, before);
}

/// Inserts an empty column before all others, or amid them, and then deletes it.
ConditionalFormatters::Change insertOrDeleteColumn(BenchTable& table, std::size_t number) {
  unsigned long const column = table.getColumn().endColumn / 2;
  bool const isInsertion = number % 2 == 0;
  isInsertion ? table.getTable().insertColumns(column, 1)
              : table.getTable().deleteColumns(column, 1);
  return toldLines(table, ConditionalFormatters::Axis::Columns,
                   isInsertion ? ConditionalFormatters::LineEdit::Insert
                               : ConditionalFormatters::LineEdit::Delete,
                   column);
}

/// Moves a column behind the next one: the only one, or one amid the others.
ConditionalFormatters::Change moveColumn(BenchTable& table, std::size_t number) {
  unsigned long const columns = table.getColumn().endColumn;
  unsigned long const column = columns == 1 ? number % 2 : columns / 2;
  unsigned long const before = column == 1 ? 0 : column + 2;
  table.getTable().moveColumns(column, 1, before);
  return toldLines(table, ConditionalFormatters::Axis::Columns,
                   ConditionalFormatters::LineEdit::Move, column, before);
}

/// Tells that formats changed, and leaves them as they are.
ConditionalFormatters::Change touchFormats(BenchTable& table, std::size_t /*number*/) {
  return ConditionalFormatters::FormatsChanged{&table.getTable()};
}

/// 2,000 cells amid the table, and a column more: an edit may move the last one there.
TableRange findEditedView(BenchTable const& table) noexcept {
  TableRange const all = table.getColumn();
  unsigned long const firstRow = all.endRow / 2;
  return {firstRow, 0, firstRow + viewedCells / all.endColumn, all.endColumn + 1};
}

/// An edit, without the table's own work, and the cells in sight that look different.
void measureDocumentEdit(benchmark::State& state, DocumentEditKind const& kind) {
  BenchTable table(static_cast<std::size_t>(state.range(0)), kind.columnCount);
  addTwelve(table);
  table.makeCalculator();
  LiveResolver resolver = table.getCalculator().follow(table.getStyles(), table.getTable());
  LiveView view(resolver);
  view.show(findEditedView(table));
  std::size_t visited = 0;
  auto const paint = [&](ResolvedCell const& /*cell*/) { ++visited; };
  view.refresh(paint);
  static_cast<void>(prepareInSlices(resolver));
  std::size_t number = 0;
  for (auto _ : state) {
    state.PauseTiming();
    auto const change = kind.edit(table, number++);
    state.ResumeTiming();
    benchmark::DoNotOptimize(resolver.apply({change}));
    view.refresh(paint);
  }
  benchmark::DoNotOptimize(visited);
}

/// The same by a new resolver for each edit, which visits all cells in sight.
void measureDocumentEditAnew(benchmark::State& state, DocumentEditKind const& kind) {
  BenchTable table(static_cast<std::size_t>(state.range(0)), kind.columnCount);
  addTwelve(table);
  table.makeCalculator();
  TableRange const inSight = findEditedView(table);
  std::size_t holding = 0;
  std::size_t number = 0;
  for (auto _ : state) {
    state.PauseTiming();
    static_cast<void>(kind.edit(table, number++));
    state.ResumeTiming();
    table.getCalculator().clearTablesRangesCache();
    auto const resolver = table.getCalculator().prepare(table.getStyles(), table.getTable());
    resolver.visit({.range = inSight},
                   [&](ResolvedCell const& cell) { holding += cell.formats.size(); });
  }
  benchmark::DoNotOptimize(holding);
}

/// Deletes one of fifty filled columns, and tells the cells in sight that look different. The
/// column is filled again outside of the measured time.
void measureDeletedColumn(benchmark::State& state) {
  using ConditionalFormatters::LineEdit;
  constexpr unsigned long deleted = 25;
  BenchTable table(static_cast<std::size_t>(state.range(0)), 50);
  addTwelve(table);
  table.makeCalculator();
  LiveResolver resolver = table.getCalculator().follow(table.getStyles(), table.getTable());
  LiveView view(resolver);
  view.show(findEditedView(table));
  std::size_t visited = 0;
  auto const paint = [&](ResolvedCell const& /*cell*/) { ++visited; };
  view.refresh(paint);
  static_cast<void>(prepareInSlices(resolver));
  unsigned long const rows = table.getColumn().endRow;
  std::mt19937 random{1};
  auto const follow = [&](LineEdit edit) {
    benchmark::DoNotOptimize(
        resolver.apply({toldLines(table, ConditionalFormatters::Axis::Columns, edit, deleted)}));
    view.refresh(paint);
  };
  for (auto _ : state) {
    state.PauseTiming();
    table.getTable().insertColumns(deleted, 1);
    follow(LineEdit::Insert);
    for (unsigned long row = 0; row < rows; ++row) {
      auto const number = static_cast<double>(random() % table.getCellCount());
      table.getTable().setValue(row, deleted, FormulaModel::FormulaNumber{FloatNumber(number)});
    }
    resolver.apply({ConditionalFormatters::ValuesChanged{&table.getTable(),
                                                         {{0, deleted, rows, deleted + 1}}}});
    view.refresh(paint);
    table.getTable().deleteColumns(deleted, 1);
    state.ResumeTiming();
    follow(LineEdit::Delete);
  }
  benchmark::DoNotOptimize(visited);
}

}  // namespace

void registerLive() {
  static constexpr EditKind plain{"edit", 1, 1};
  static constexpr EditKind hundreds{
      .name = "editHundreds", .cellCount = 1, .unit = 1, .withHundreds = true};
  static EditKind const kinds[] = {plain,
                                   {"editCents", 1, 0.01},
                                   {"editFormulas", 1, 1, true},
                                   {"editFormulasCents", 1, 0.01, true},
                                   hundreds,
                                   {"editSumsCents", 1, 0.01, false, true},
                                   {"editSumsBy", 1, 0.01, false, true, true},
                                   {"pasteSumsBy", 1'000, 0.01, false, true, true},
                                   {"paste", 1'000, 1}};
  auto const withSizes = [](benchmark::internal::Benchmark* measured) {
    measured->Arg(10'000)->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMicrosecond);
  };
  for (EditKind const& kind : kinds) {
    std::string name = "live/";
    name += kind.name;
    benchmark::RegisterBenchmark(name.c_str(), [&kind](benchmark::State& state) {
      measureFollowedEdit(state, kind);
    })->Apply(withSizes);
    name += "Anew";
    benchmark::RegisterBenchmark(name.c_str(), [&kind](benchmark::State& state) {
      measureEditAnew(state, kind);
    })->Apply(withSizes);
  }
  static constexpr EditKind pasteMany{"live/pasteMany", 30'000, 1};
  benchmark::RegisterBenchmark(
      pasteMany.name, [](benchmark::State& state) { measureFollowedEdit(state, pasteMany); })
      ->Arg(1'000'000)
      ->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark("live/deleteFilledColumn", measureDeletedColumn)
      ->Arg(1'000'000)
      ->Unit(benchmark::kMicrosecond);
  for (auto const& [name, kind, rows] : {std::tuple("live/scroll3", &plain, 3UL),
                                         {"live/scrollPage", &plain, viewedCells},
                                         {"live/scrollPageHundreds", &hundreds, viewedCells}}) {
    benchmark::RegisterBenchmark(name, [kind = kind, rows = rows](benchmark::State& state) {
      measureScroll(state, *kind, rows);
    })->Apply(withSizes);
    std::string const anew = std::string(name) + "Anew";
    benchmark::RegisterBenchmark(anew.c_str(), [kind = kind, rows = rows](benchmark::State& state) {
      measureScrollAnew(state, *kind, rows);
    })->Apply(withSizes);
  }
  benchmark::RegisterBenchmark(
      "live/scrollPageHundredsByTwo",
      [](benchmark::State& state) { measureScroll(state, hundreds, viewedCells, 2); })
      ->Arg(1'000'000)
      ->Unit(benchmark::kMicrosecond)
      ->UseRealTime();
  static DocumentEditKind const documentEdits[] = {
      {"live/row", insertOrDeleteRow},       {"live/moveRow", moveRow},
      {"live/column", insertOrDeleteColumn}, {"live/columnAmid", insertOrDeleteColumn, 10},
      {"live/moveColumn", moveColumn},       {"live/moveColumnAmid", moveColumn, 10},
      {"live/formats", touchFormats}};
  for (DocumentEditKind const& kind : documentEdits) {
    benchmark::RegisterBenchmark(kind.name, [&kind](benchmark::State& state) {
      measureDocumentEdit(state, kind);
    })->Apply(withSizes);
    std::string const anew = std::string(kind.name) + "Anew";
    benchmark::RegisterBenchmark(anew.c_str(), [&kind](benchmark::State& state) {
      measureDocumentEditAnew(state, kind);
    })->Apply(withSizes);
  }
}

}  // namespace Zorv::Benchmarks
