#include "Formulas/Tracing/ValueSummary.h"

#include <cstdint>

#include "FormulaModel/FormulaValueAccess.h"
#include "Formulas/Values/Cells.h"
#include "OfficeUtils/NumberFormat.h"

namespace Zorv::Formulas {

namespace {

class ValueSummary {
public:
  explicit ValueSummary(std::size_t firstValues) noexcept : _mostValues(firstValues) {}

  [[nodiscard]] TracedValue of(Value const& value) const {
    TracedValue traced;
    if (value.isReference()) {
      addArea(traced, value.asArea());
    } else if (value.isReferences()) {
      traced.kind = TracedValue::Kind::Ranges;
      traced.rangeCount = value.asAreas().count;
    } else if (value.isLambda()) {
      traced.kind = TracedValue::Kind::Function;
    } else if (value.isArray()) {
      Array const& array = value.asArray();
      traced.kind = TracedValue::Kind::Array;
      addValues(traced, array.rows, array.columns,
                [&](std::uint32_t row, std::uint32_t column) { return array.at(row, column); });
    } else {
      traced.value = toFormulaValue(value);
    }
    return traced;
  }

private:
  void addArea(TracedValue& traced, Area const& area) const {
    traced.reference = Reference{area.table->getDocTableIndex(), area.toTableRange()};
    if (area.isSingleCell()) {
      traced.value = toFormulaValue(readCell(area, 0, 0));
      traced.isDate = showsDate(area);
      return;
    }
    traced.kind = TracedValue::Kind::Range;
    addValues(traced, area.height(), area.width(),
              [&](std::uint32_t row, std::uint32_t column) { return readCell(area, row, column); });
  }

  template <class Read>
  void addValues(TracedValue& traced, std::uint32_t rows, std::uint32_t columns,
                 Read const& read) const {
    traced.rows = rows;
    traced.columns = columns;
    for (std::uint64_t i = 0; i < _mostValues && i < traced.rows * traced.columns; ++i) {
      traced.firstValues.push_back(toFormulaValue(
          read(static_cast<std::uint32_t>(i / columns), static_cast<std::uint32_t>(i % columns))));
    }
  }

  /// True if a cell shows its number as a date.
  static bool showsDate(Area const& area) {
    auto const* const cell = area.table->getTable().findCell(area.firstRow, area.firstColumn);
    auto const number = cell != nullptr ? FormulaModel::asFormulaNumberOpt(cell->value)
                                        : boost::optional<FormulaModel::FormulaNumber>();
    if (!number || !cell->style || !cell->style->get().getCellFormat()) {
      return false;
    }
    auto const format =
        OfficeUtils::NumberFormat::compile(cell->style->get().getCellFormat()->code);
    return format && format->showsDate(number->value.get());
  }

  std::size_t _mostValues;
};

}  // namespace

TracedValue summariseValue(Value const& value, std::size_t mostValues) {
  return ValueSummary(mostValues).of(value);
}

}  // namespace Zorv::Formulas
