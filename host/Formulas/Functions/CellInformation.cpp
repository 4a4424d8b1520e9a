// CELL: what is known of a cell besides its value.

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "DOM/A1Notation.h"
#include "DOM/Table.h"
#include "Formulas/Evaluation/Call.h"
#include "Formulas/Functions/Families.h"
#include "Formulas/Functions/NumberFormatClass.h"
#include "Formulas/Text/SheetName.h"
#include "Formulas/Text/Texts.h"

namespace Zorv::Formulas {

namespace {

/// The first cell of the reference that a call is about.
struct Subject {
  Call const& call;
  Area area;

  [[nodiscard]] Value value() const { return readCell(area, 0, 0); }

  /// Null where the cell has none of its own.
  [[nodiscard]] DOM::CellStyle const* style() const {
    DOM::Cell const* const cell = area.table->getTable().findCell(area.firstRow, area.firstColumn);
    return cell == nullptr || !cell->style ? nullptr : &cell->style->get();
  }

  [[nodiscard]] NumberFormatClass format() const {
    bool const hasFormat = style() != nullptr && style()->getCellFormat() != nullptr;
    return hasFormat ? classifyNumberFormat(style()->getCellFormat()->code) : NumberFormatClass();
  }
};

/// With the sheet where that is not the formula's own.
Value address(Subject const& subject) {
  std::string const cell =
      DOM::A1Notation::toText({{subject.area.firstRow, false}, {subject.area.firstColumn, false}});
  bool const isOwn = subject.area.table == subject.call.evaluator().context().getTableContext();
  return subject.call.makeText(isOwn ? cell
                                     : writeSheetPrefix(subject.area.table->getSheetName()) + cell);
}

Value column(Subject const& subject) { return Value::number(subject.area.firstColumn + 1); }
Value row(Subject const& subject) { return Value::number(subject.area.firstRow + 1); }
Value contents(Subject const& subject) { return subject.value(); }

Value colour(Subject const& subject) {
  return Value::number(subject.format().hasNegativeColour ? 1 : 0);
}

Value parentheses(Subject const& subject) {
  return Value::number(subject.format().hasParentheses ? 1 : 0);
}

Value format(Subject const& subject) { return subject.call.makeText(subject.format().code); }

/// The file's own name is not known here, only that of the sheet.
Value fileName(Subject const& subject) {
  return subject.call.makeText("[]" + subject.area.table->getSheetName());
}

/// The sign of a text's alignment.
Value prefix(Subject const& subject) {
  DOM::CellStyle const* const style = subject.style();
  bool const hasAlignment = style != nullptr && style->getParaProps() != nullptr &&
                            style->getParaProps()->horizontalAlignment.has_value();
  if (!subject.value().isText()) {
    return Value::text({});
  }
  using Alignment = DOM::HorizontalAlignment;
  switch (hasAlignment ? *style->getParaProps()->horizontalAlignment : Alignment::General) {
    case Alignment::Right:
      return Value::text("\"");
    case Alignment::Center:
      return Value::text("^");
    case Alignment::Fill:
      return Value::text("\\");
    default:
      return Value::text("'");
  }
}

Value protection(Subject const& subject) {
  DOM::CellStyle const* const style = subject.style();
  bool const isLocked = style == nullptr || style->getCellProps() == nullptr ||
                        style->getCellProps()->locked.value_or(true);
  return Value::number(isLocked ? 1 : 0);
}

/// Blank, label or value.
Value type(Subject const& subject) {
  Value const value = subject.value();
  return Value::text(value.isEmpty() ? "b" : value.isText() ? "l" : "v");
}

/// Widths of columns are not known here: the standard one, in whole characters.
Value width(Subject const& /*subject*/) { return Value::number(8); }

struct Key {
  std::string_view name;
  Value (*answer)(Subject const&);
};

constexpr std::array keys = {
    Key{"address", address},
    Key{"col", column},
    Key{"color", colour},
    Key{"contents", contents},
    Key{"filename", fileName},
    Key{"format", format},
    Key{"parentheses", parentheses},
    Key{"prefix", prefix},
    Key{"protect", protection},
    Key{"row", row},
    Key{"type", type},
    Key{"width", width},
};

/// CELL(key, reference); without a reference, of the formula's cell.
Value cell(Call& call) {
  std::string_view const name = call.text(0);
  auto const* const key =
      std::ranges::find_if(keys, [&](Key const& each) { return equalTexts(each.name, name); });
  if (key == keys.end()) {
    return Value::error(FormulaErrorCode::Value);
  }
  if (call.isGiven(1) && !call[1].isReference()) {
    return call[1].isError() ? call[1] : Value::error(FormulaErrorCode::Value);
  }
  Evaluator& evaluator = call.evaluator();
  Area const own{evaluator.context().getTableContext(), evaluator.row(), evaluator.column(),
                 evaluator.row() + 1, evaluator.column() + 1};
  return key->answer({call, call.isGiven(1) ? call[1].asArea() : own});
}

}  // namespace

std::span<FunctionEntry const> cellInformationFunctions() noexcept {
  static constexpr std::array entries = {
      FunctionEntry{"CELL",
                    "property:t, [reference:r]",
                    cell,
                    "Property of a cell, such as \"address\", \"format\" or \"type\".",
                    {.isVolatile = true, .dependsOnCell = true}},
  };
  return entries;
}

}  // namespace Zorv::Formulas
