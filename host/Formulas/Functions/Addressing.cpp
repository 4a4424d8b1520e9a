// References that are computed: INDEX, OFFSET, INDIRECT, and the texts of addresses.

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "Formulas/Evaluation/Call.h"
#include "Formulas/FormulaParseError.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/Grid.h"
#include "Formulas/Parsing/ParseFormula.h"
#include "Formulas/Text/R1C1Notation.h"
#include "Formulas/Text/SheetName.h"
#include "Formulas/Values/Coercion.h"

namespace Zorv::Formulas {

namespace {

using DOM::FormulaSyntaxTree::NodeKind;

constexpr auto sheetRows = static_cast<std::uint32_t>(DOM::Table::rowCount);
constexpr auto sheetColumns = static_cast<std::uint32_t>(DOM::Table::columnCount);

Value noReference() { return Value::error(FormulaErrorCode::Reference); }

/// A reference that is known only at run time.
Value foundReference(Call const& call, Area const& area) {
  call.evaluator().dependencies().add(area.table->getDocTableIndex(), area.toTableRange());
  return Value::reference(area);
}

/// Of several areas the one of a number from 1 on, of others the value itself.
Value selectArea(Value const& value, double number) {
  double const whole = std::trunc(number);
  if (!value.isReferences()) {
    return value.isError() || whole == 1.0 ? value : noReference();
  }
  AreaList const& areas = value.asAreas();
  if (whole < 1.0 || whole > static_cast<double>(areas.count)) {
    return noReference();
  }
  return Value::reference(areas.areas[static_cast<std::size_t>(whole) - 1]);
}

/// A part of one dimension: the line of a number from 1 on, or for 0 all lines.
struct Lines {
  std::uint32_t first = 0;
  std::uint32_t count = 0;
};

Outcome<Lines> toLines(double number, std::uint32_t count) {
  double const whole = std::trunc(number);
  if (whole < 0.0) {
    return FormulaErrorCode::Value;
  }
  if (whole > count) {
    return FormulaErrorCode::Reference;
  }
  return whole == 0.0 ? Lines{0, count} : Lines{static_cast<std::uint32_t>(whole) - 1, 1};
}

/// INDEX(array, row, column, area): a value, a row, a column, or all of it. In a single row one
/// number alone counts columns.
Value index(Call& call) {
  Value const selected = selectArea(call[0], call.number(3, 1.0));
  auto const grid = Grid::of(selected);
  if (!grid) {
    return Grid::refuse(selected);
  }
  double row = call.number(1);
  double column = call.number(2, 0.0);
  if (call.count() == 2 && grid->rows() == 1) {
    column = row;
    row = 0.0;
  }
  auto const rows = toLines(row, grid->rows());
  auto const columns = toLines(column, grid->columns());
  if (rows.isError() || columns.isError()) {
    return rows.isError() ? rows.error() : columns.error();
  }
  return grid->part(call.evaluator().arena(), (*rows).first, (*columns).first, (*rows).count,
                    (*columns).count);
}

/// One dimension of OFFSET's result: moved by a distance, and `size` long, upwards or to the left
/// where that is negative. Nothing off the sheet.
std::optional<Lines> moveLines(std::uint32_t first, double distance, double size,
                               std::uint32_t limit) {
  double const length = std::trunc(size);
  double const from = first + std::trunc(distance) + (length < 0.0 ? length + 1.0 : 0.0);
  bool const isInside = length != 0.0 && from >= 0.0 && from + std::abs(length) <= limit;
  if (!isInside) {
    return std::nullopt;
  }
  return Lines{static_cast<std::uint32_t>(from), static_cast<std::uint32_t>(std::abs(length))};
}

/// OFFSET(reference, rows, columns, height, width)
Value offset(Call& call) {
  if (!call[0].isReference()) {
    return Grid::refuse(call[0]);
  }
  Area const& area = call[0].asArea();
  auto const sizeAt = [&](std::size_t argument, std::uint32_t absent) {
    return call.isGiven(argument) ? toNumber(call[argument], call.locale())
                                  : Outcome<double>(absent);
  };
  auto const height = sizeAt(3, area.height());
  auto const width = sizeAt(4, area.width());
  if (height.isError() || width.isError()) {
    return height.isError() ? height.error() : width.error();
  }
  auto const rows = moveLines(area.firstRow, call.number(1), *height, sheetRows);
  auto const columns = moveLines(area.firstColumn, call.number(2), *width, sheetColumns);
  if (!rows || !columns) {
    return noReference();
  }
  return foundReference(call, {area.table, rows->first, columns->first, rows->first + rows->count,
                               columns->first + columns->count});
}

/// The reference that a text in A1 notation, or a defined name, means.
Value readA1(Call const& call, std::string_view text) {
  if (text.starts_with('=')) {
    return noReference();
  }
  call.steps().spend(stepsOfReading(text));
  try {
    DOM::FormulaSyntaxTree::Expr const expr = parseFormula(text, call.evaluator().functions());
    auto const& parts = expr.getParts();
    NodeKind const kind = parts.nodes.empty() ? NodeKind::Empty : parts.nodes.back().kind;
    bool const mayBeReference = kind == NodeKind::Reference || kind == NodeKind::Name ||
                                kind == NodeKind::StructuredReference;
    // A reference, unlike other values, does not borrow from the expression.
    Value const value =
        mayBeReference ? call.evaluator().evaluate(parts, {}, Mode::Single) : noReference();
    return value.isReference() ? value : noReference();
  } catch (FormulaParseError const&) {
    return noReference();
  }
}

/// The table that the part of a text before its exclamation mark names, which is taken away; the
/// formula's own where there is none. Null for a sheet that does not exist.
TableContext const* takeSheet(Call const& call, std::string_view& text) {
  std::size_t const end = text.rfind('!');
  if (end == std::string_view::npos) {
    return call.evaluator().context().getTableContext();
  }
  std::string_view quoted = text.substr(0, end);
  text.remove_prefix(end + 1);
  bool const isQuoted = quoted.size() > 1 && quoted.front() == '\'' && quoted.back() == '\'';
  if (!isQuoted) {
    return call.evaluator().provider().findTableContext(quoted);
  }
  quoted = quoted.substr(1, quoted.size() - 2);
  std::string name;
  for (std::size_t i = 0; i < quoted.size(); ++i) {
    name += quoted[i];
    i += quoted.substr(i).starts_with("''") ? 1 : 0;
  }
  return call.evaluator().provider().findTableContext(name);
}

Value readR1C1(Call const& call, std::string_view text) {
  TableContext const* const table = takeSheet(call, text);
  auto const corners = R1C1Notation::read(text, call.evaluator().row(), call.evaluator().column());
  if (table == nullptr || !corners) {
    return noReference();
  }
  return Value::reference({table, corners->firstRow, corners->firstColumn, corners->lastRow + 1,
                           corners->lastColumn + 1});
}

/// INDIRECT(text, isA1)
Value indirect(Call& call) {
  Value const value =
      call.truth(1, true) ? readA1(call, call.text(0)) : readR1C1(call, call.text(0));
  return value.isReference() ? foundReference(call, value.asArea()) : value;
}

/// The optional arguments of ADDRESS; one left out between commas is as if it were not there.
struct AddressForm {
  bool isRowAbsolute = true;
  bool isColumnAbsolute = true;
  bool isA1 = true;
};

Outcome<AddressForm> readAddressForm(Call const& call) {
  auto const kind = call.isGiven(2) ? toNumber(call[2], call.locale()) : Outcome<double>(1.0);
  auto const isA1 = call.isGiven(3) ? toTruth(call[3]) : Outcome<bool>(true);
  if (kind.isError() || isA1.isError()) {
    return (kind.isError() ? kind.error() : isA1.error()).asError();
  }
  double const whole = std::trunc(*kind);
  if (whole < 1.0 || whole > 4.0) {
    return FormulaErrorCode::Value;
  }
  return AddressForm{whole <= 2.0, whole == 1.0 || whole == 3.0, *isA1};
}

std::string writeCell(std::uint32_t row, std::uint32_t column, AddressForm const& form) {
  return form.isA1 ? DOM::A1Notation::toText(
                         {{row, !form.isRowAbsolute}, {column, !form.isColumnAbsolute}})
                   : R1C1Notation::write(row, column, form.isRowAbsolute, form.isColumnAbsolute);
}

/// ADDRESS(row, column, kind, isA1, sheet): kind 1 is absolute, 2 in its row only, 3 in its column
/// only, 4 relative.
Value address(Call& call) {
  double const row = std::trunc(call.number(0));
  double const column = std::trunc(call.number(1));
  auto const form = readAddressForm(call);
  if (form.isError()) {
    return form.error();
  }
  if (row < 1.0 || row > sheetRows || column < 1.0 || column > sheetColumns) {
    return Value::error(FormulaErrorCode::Value);
  }
  auto const sheet = call.isGiven(4) ? call.evaluator().toText(call[4]) : std::string_view();
  if (sheet.isError()) {
    return sheet.error();
  }
  std::string const cell =
      writeCell(static_cast<std::uint32_t>(row) - 1, static_cast<std::uint32_t>(column) - 1, *form);
  return call.makeText(call.isGiven(4) ? writeSheetPrefix(*sheet) + cell : cell);
}

}  // namespace

std::span<FunctionEntry const> addressingFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"ADDRESS", "row:n, column:n, [kind:v, isA1:v, sheet:v]", address,
                    "Text of a cell's address; kind 1 is absolute, 2 has an absolute row, 3 an "
                    "absolute column, 4 is relative."},
      FunctionEntry{"INDEX",
                    "array:a, row:n, [column:n, area:n]",
                    index,
                    "Value, row or column at a position of a range or an array; position 0 gives "
                    "all of them.",
                    {.returnsReference = true}},
      FunctionEntry{"INDIRECT",
                    "text:t, [isA1:b]",
                    indirect,
                    "Reference that a text spells, in A1 or R1C1 notation.",
                    {.isVolatile = true, .dependsOnCell = true, .returnsReference = true}},
      FunctionEntry{"OFFSET",
                    "reference:r, rows:n, columns:n, [height:v, width:v]",
                    offset,
                    "Reference moved by a number of rows and columns, of the same or a given size.",
                    {.isVolatile = true, .returnsReference = true, .asksPlaceOfFirst = true}},
  };
  return entries;
}

}  // namespace Zorv::Formulas
