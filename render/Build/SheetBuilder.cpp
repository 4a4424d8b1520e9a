#include "render/Build/SheetBuilder.h"

#include <algorithm>
#include <optional>
#include <utility>

#include <fmt/format.h>

#include "DOM/A1Notation.h"
#include "render/Build/CellTexts.h"
#include "render/Build/Looks.h"
#include "render/Build/Pages.h"
#include "render/Build/RowBuilder.h"
#include "render/Build/ShownLines.h"
#include "render/Build/ShownRange.h"
#include "workbook/SheetRules.h"

namespace Zorv::Render {

namespace {

constexpr TableRange wholeSheet{0, 0, DOM::Table::rowCount, DOM::Table::columnCount};

/// Columns before it are not in the picture, and neither are frozen ones among them.
std::uint32_t countFrozen(ShownLines const& lines, unsigned long frozenEnd) noexcept {
  return frozenEnd > 0 ? lines.atOrAfter(frozenEnd) : 0;
}

/// Positions of lines one after the other; returns where the last one ends.
double placeLines(ShownLines const& lines, Looks& looks, std::vector<Line>& places) {
  double at = 0;
  places.reserve(lines.size());
  for (auto const& line : lines.get()) {
    std::uint32_t const look = line.style != nullptr ? looks.find(line.style, nullptr).look : 0;
    places.push_back({.index = line.index, .start = at, .size = line.size, .look = look});
    at += line.size;
  }
  return at;
}

/// The part of a range that the positions left allow; a finding says what is left out.
TableRange limitRange(BuildState& state, Workbook::Sheet const& sheet, TableRange const& range) {
  TableRange const limited = limitPositions(range, state.positionsLeft);
  if (limited != range) {
    state.findings.push_back(
        limited.isEmpty()
            ? fmt::format("{}: is left out, since the picture has {} positions without it, which "
                          "is the limit",
                          sheet.name, state.options.positionLimit)
            : fmt::format("{}: what lies outside of {} is left out, since a picture has no more "
                          "than {} positions",
                          sheet.name, DOM::A1Notation::toAddress(limited),
                          state.options.positionLimit));
  }
  state.positionsLeft -=
      std::uint64_t{limited.endRow - limited.firstRow} * (limited.endColumn - limited.firstColumn);
  return limited;
}

/// The range that is drawn: the chosen one, or all that is seen. Whole rows and columns are drawn
/// as far as something is seen.
TableRange chooseRange(std::optional<TableRange> const& chosen, TableRange const& shown) noexcept {
  if (!chosen) {
    return shown;
  }
  TableRange range = intersect(*chosen, wholeSheet);
  if (range.endRow == wholeSheet.endRow) {
    range.endRow = std::max(shown.endRow, range.firstRow);
  }
  if (range.endColumn == wholeSheet.endColumn) {
    range.endColumn = std::max(shown.endColumn, range.firstColumn);
  }
  return range;
}

void reportOverlaps(BuildState& state, Workbook::Sheet const& sheet, std::size_t count) {
  if (count > 0) {
    state.findings.push_back(fmt::format("{}: {} merged {} others and {} left out", sheet.name,
                                         count, count == 1 ? "area overlaps" : "areas overlap",
                                         count == 1 ? "is" : "are"));
  }
}

void reportPlainTexts(BuildState& state, Workbook::Sheet const& sheet, std::size_t count) {
  if (count > 0) {
    state.findings.push_back(
        fmt::format("{}: {} {} in the font of the cell alone, since only the first {} stretches of "
                    "rich text are drawn",
                    sheet.name, count, count == 1 ? "text is" : "texts are", RichTexts::mostRuns));
  }
}

}  // namespace

SheetPicture buildSheet(BuildState& state, SheetSelection const& selection) {
  Workbook::Sheet const& sheet = state.document.getSheets().at(selection.sheet);
  Workbook::SheetRules const rules = state.resolver.listRules(selection.sheet);
  Decisions decisions(state.document, selection.sheet, rules);
  Resolution const resolution = state.resolver.resolve(
      selection.sheet, selection.range.value_or(wholeSheet), rules, decisions, state.findings);
  Looks looks(state.document.getDefaultCellStyle().get(), state.locale);
  CellTexts const texts(state.locale, sheet.layout.rightToLeft);

  SheetPicture picture;
  picture.sheet = selection.sheet;
  picture.name = sheet.name;
  picture.range = limitRange(
      state, sheet, chooseRange(selection.range, findShownRange(sheet, resolution, looks, texts)));
  ShownLines rows = ShownLines::ofRows(sheet.layout, picture.range.firstRow, picture.range.endRow);
  ShownLines const columns =
      ShownLines::ofColumns(sheet.layout, findDigitWidth(looks.get(0).font),
                            picture.range.firstColumn, picture.range.endColumn);
  auto const& usual = state.document.getDefaultCellStyle();
  PictureParts const parts{sheet,   resolution,    rows,
                           columns, picture.range, usual ? &usual->get() : nullptr};
  if (state.options.budget != nullptr) {
    state.options.budget->takeMemory((std::uint64_t{rows.size()} + columns.size()) *
                                     (sizeof(ShownLines::Entry) + sizeof(Line)));
  }
  picture.cells.reserve(
      std::min<std::uint64_t>(std::uint64_t{rows.size()} * columns.size(),
                              sheet.table->getCellCount() + resolution.positions.size()));
  RowBuilder builder(state, parts, {looks, texts, decisions}, picture);
  for (std::uint32_t row = 0; row < rows.size(); ++row) {
    rows.grow(row, builder.addRow(row));
  }
  builder.finish();
  reportOverlaps(state, sheet, builder.getOverlapCount());
  reportPlainTexts(state, sheet, builder.countPlainTexts());

  picture.height = placeLines(rows, looks, picture.rows);
  picture.width = placeLines(columns, looks, picture.columns);
  picture.frozenRows = countFrozen(rows, sheet.layout.frozenRows);
  picture.frozenColumns = countFrozen(columns, sheet.layout.frozenColumns);
  picture.showsGridLines = sheet.layout.showGridLines;
  picture.rightToLeft = sheet.layout.rightToLeft;
  picture.page = makePageSetup(state, selection.sheet, rows, columns);
  picture.looks = std::move(looks).take();
  picture.rules = decisions.takeRules();
  picture.decisions = decisions.takeLists();
  return picture;
}

}  // namespace Zorv::Render
