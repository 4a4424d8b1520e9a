#include "Formulas/Values/Cells.h"

#include <algorithm>

#include <boost/variant/get.hpp>

namespace Zorv::Formulas {

Value fromFormulaValue(FormulaValue const& value) noexcept {
  using namespace FormulaModel;
  switch (value.which()) {
    case FormulaValueKind::Number:
      return Value::number(boost::get<FormulaNumber>(&value)->value.get());
    case FormulaValueKind::String:
      return Value::text(boost::get<FormulaString>(&value)->value);
    case FormulaValueKind::Boolean:
      return Value::boolean(boost::get<FormulaBoolean>(&value)->value);
    case FormulaValueKind::Error:
      return Value::error(boost::get<FormulaError>(&value)->code);
    default:
      return {};
  }
}

Value readCell(Area const& area, std::uint32_t row, std::uint32_t column) {
  DOM::Cell const* const cell =
      area.table->getTable().findCell(area.firstRow + row, area.firstColumn + column);
  return cell == nullptr ? Value() : fromFormulaValue(cell->value);
}

std::uint64_t maxCellCount(Area const& area) {
  return std::min<std::uint64_t>(area.size(), area.table->getTable().getCellCount());
}

}  // namespace Zorv::Formulas
