#include "workbook/TableLooks.h"

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <tuple>
#include <type_traits>
#include <utility>

namespace Zorv::Workbook {

namespace {

/// Sides of a part of a table that a position touches.
struct PartSides {
  bool left = true;
  bool right = true;
  bool top = true;
  bool bottom = true;
};

struct BodyLines {
  unsigned long begin;
  unsigned long end;
};

void placeInStripes(TableLine& place, unsigned long line,
                    std::array<unsigned long, 2> const& sizes) noexcept {
  unsigned long const inPeriod = line % (sizes[0] + sizes[1]);
  bool const isInFirst = inPeriod < sizes[0];
  unsigned long const inStripe = isInFirst ? inPeriod : inPeriod - sizes[0];
  place.stripe = isInFirst ? 1 : 2;
  place.beginsStripe = inStripe == 0;
  place.endsStripe = inStripe + 1 == (isInFirst ? sizes[0] : sizes[1]);
}

void placeInBody(TableLine& place, unsigned long line, BodyLines const& body,
                 std::array<unsigned long, 2> const* stripes) noexcept {
  if (line < body.begin || line >= body.end) {
    return;
  }
  place.beginsBody = line == body.begin;
  place.endsBody = line + 1 == body.end;
  if (stripes != nullptr) {
    placeInStripes(place, line - body.begin, *stripes);
    place.endsStripe = place.endsStripe || place.endsBody;
  }
}

/// Stripes lie between header and totals row.
std::optional<PartSides> findStripeSides(TablePart part, TableLine const& row,
                                         TableLine const& column) noexcept {
  bool const areColumns =
      part == TablePart::FirstColumnStripe || part == TablePart::SecondColumnStripe;
  bool const isFirst = part == TablePart::FirstColumnStripe || part == TablePart::FirstRowStripe;
  TableLine const& line = areColumns ? column : row;
  if (row.isHead || row.isFoot || line.stripe != (isFirst ? 1 : 2)) {
    return std::nullopt;
  }
  return areColumns
             ? PartSides{column.beginsStripe, column.endsStripe, row.beginsBody, row.endsBody}
             : PartSides{column.isFirst, column.isLast, row.beginsStripe, row.endsStripe};
}

/// The sides of a part at a position; nothing if the position is not in the part.
std::optional<PartSides> findSides(TablePart part, TableLine const& row,
                                   TableLine const& column) noexcept {
  auto const onlyIf = [](bool isInPart, PartSides const& sides) {
    return isInPart ? std::optional(sides) : std::nullopt;
  };
  PartSides const whole{column.isFirst, column.isLast, row.isFirst, row.isLast};
  switch (part) {
    case TablePart::WholeTable:
      return whole;
    case TablePart::FirstColumnStripe:
    case TablePart::SecondColumnStripe:
    case TablePart::FirstRowStripe:
    case TablePart::SecondRowStripe:
      return findStripeSides(part, row, column);
    case TablePart::LastColumn:
      return onlyIf(column.isFoot, {true, true, whole.top, whole.bottom});
    case TablePart::FirstColumn:
      return onlyIf(column.isHead, {true, true, whole.top, whole.bottom});
    case TablePart::HeaderRow:
      return onlyIf(row.isHead, {whole.left, whole.right, true, true});
    case TablePart::TotalRow:
      return onlyIf(row.isFoot, {whole.left, whole.right, true, true});
    case TablePart::FirstHeaderCell:
      return onlyIf(row.isHead && column.isHead, {});
    case TablePart::LastHeaderCell:
      return onlyIf(row.isHead && column.isFoot, {});
    case TablePart::FirstTotalCell:
      return onlyIf(row.isFoot && column.isHead, {});
    case TablePart::LastTotalCell:
      return onlyIf(row.isFoot && column.isFoot, {});
  }
  return std::nullopt;
}

/// The lines of a part that a position has.
DOM::CellProps cutToPosition(TablePartFormat const& format, PartSides const& sides) {
  DOM::CellProps props = format.cell;
  props.borderLeft = sides.left ? props.borderLeft : format.vertical;
  props.borderRight = sides.right ? props.borderRight : format.vertical;
  props.borderTop = sides.top ? props.borderTop : format.horizontal;
  props.borderBottom = sides.bottom ? props.borderBottom : format.horizontal;
  return props;
}

template <class Props>
Props takeProps(std::shared_ptr<Props const> const& props) {
  return props ? *props : Props();
}

/// The group, or null if nothing in it is set.
template <class Props>
std::shared_ptr<Props const> share(Props const& props) {
  return props == Props() ? nullptr : std::make_shared<Props const>(props);
}

/// A line of no style is none of its own.
bool hasLine(std::optional<DOM::BorderLine> const& line) noexcept {
  return line && line->style != DOM::LineStyle::None;
}

/// The members of a fill count together.
void layFillOver(DOM::CellProps& table, DOM::CellProps const& own, DOM::CellProps const& usual) {
  auto const membersOf = [](DOM::CellProps const& props) {
    return std::tie(props.fillPattern, props.fillColour, props.fillPatternColour,
                    props.fillGradient);
  };
  bool const isFilled = own.fillPattern.value_or(DOM::FillPattern::None) != DOM::FillPattern::None;
  if ((isFilled && membersOf(own) != membersOf(usual)) || !table.fillPattern) {
    table.fillPattern = own.fillPattern;
    table.fillColour = own.fillColour;
    table.fillPatternColour = own.fillPatternColour;
    table.fillGradient = own.fillGradient;
  }
}

/// The other members of cells and of characters, one by one.
template <class Props>
void layMembersOver(Props& table, Props const& own, Props const& usual) {
  auto const lay = [&](auto const& entry) {
    auto const& value = own.*entry.member;
    bool counts = value && value != usual.*entry.member;
    if constexpr (std::is_same_v<decltype(value), std::optional<DOM::BorderLine> const&>) {
      counts = counts && hasLine(value);
    }
    if (counts || !(table.*entry.member)) {
      table.*entry.member = value;
    }
  };
  std::apply([&](auto const&... entries) { (lay(entries), ...); }, Props::members());
}

void layCellOver(DOM::CellProps& table, DOM::CellProps const& own, DOM::CellProps const& usual) {
  DOM::CellProps filled = table;
  layFillOver(filled, own, usual);
  layMembersOver(table, own, usual);
  table.fillPattern = filled.fillPattern;
  table.fillColour = filled.fillColour;
  table.fillPatternColour = filled.fillPatternColour;
  table.fillGradient = std::move(filled.fillGradient);
}

}  // namespace

TableLine placeRow(StyledTable const& table, unsigned long row) noexcept {
  TableRange const& range = table.range;
  TableLine place;
  place.isFirst = row == range.firstRow;
  place.isLast = row + 1 == range.endRow;
  place.isHead = table.hasHeaderRow && place.isFirst;
  place.isFoot = table.hasTotalsRow && place.isLast && !place.isHead;
  placeInBody(
      place, row,
      {range.firstRow + (table.hasHeaderRow ? 1 : 0), range.endRow - (table.hasTotalsRow ? 1 : 0)},
      table.hasRowStripes ? &table.style->rowStripes : nullptr);
  return place;
}

TableLine placeColumn(StyledTable const& table, unsigned long column) noexcept {
  TableRange const& range = table.range;
  TableLine place;
  place.isFirst = column == range.firstColumn;
  place.isLast = column + 1 == range.endColumn;
  place.isHead = table.marksFirstColumn && place.isFirst;
  place.isFoot = table.marksLastColumn && place.isLast;
  placeInBody(place, column, {range.firstColumn, range.endColumn},
              table.hasColumnStripes ? &table.style->columnStripes : nullptr);
  return place;
}

DOM::CellStyle layOverTable(DOM::CellStyle own, DOM::CellStyle const& usual,
                            TableStyle const& style, TableLine const& row,
                            TableLine const& column) {
  DOM::RunProps run;
  DOM::CellProps cell;
  for (TableStyleElement const& element : style.elements) {
    if (auto const sides = findSides(element.part, row, column)) {
      override(run, element.format->run);
      override(cell, cutToPosition(*element.format, *sides));
    }
  }
  layMembersOver(run, takeProps(own.getRunProps()), takeProps(usual.getRunProps()));
  layCellOver(cell, takeProps(own.getCellProps()), takeProps(usual.getCellProps()));
  own.setRunProps(share(run));
  own.setCellProps(share(cell));
  return own;
}

StyledTable const* findStyledTable(Sheet const& sheet, unsigned long row,
                                   unsigned long column) noexcept {
  auto const found = std::ranges::find_if(sheet.styledTables, [&](StyledTable const& table) {
    return table.range.firstRow <= row && row < table.range.endRow &&
           table.range.firstColumn <= column && column < table.range.endColumn;
  });
  return found != sheet.styledTables.end() ? &*found : nullptr;
}

}  // namespace Zorv::Workbook
