#include "Formulas/Lookups/AreaBands.h"

#include <algorithm>

#include "DOM/Table.h"
#include "Formulas/TableContext.h"

namespace Zorv::Formulas {

std::uint64_t mostCellsIn(Area const& area) {
  return std::min<std::uint64_t>(area.size(), area.table->getTable().getCellCount());
}

AreaBands::AreaBands(Area const& area) : _used(area) {
  DOM::Table const& table = area.table->getTable();
  auto const [firstRow, endRow] = table.getUsedRows();
  _used.firstRow = std::max(area.firstRow, static_cast<std::uint32_t>(firstRow));
  _used.endRow =
      std::max(_used.firstRow, std::min(area.endRow, static_cast<std::uint32_t>(endRow)));
  std::uint64_t const cellsInTableRow =
      table.getCellCount() / std::max<std::uint64_t>(1, endRow - firstRow);
  std::uint64_t const cellsInRow =
      std::clamp<std::uint64_t>(cellsInTableRow, 1, std::max(1U, area.width()));
  _height = static_cast<std::uint32_t>(std::max<std::uint64_t>(1, cellsInBand / cellsInRow));
}

std::size_t AreaBands::count() const noexcept {
  return (std::size_t{_used.height()} + _height - 1) / _height;
}

Area AreaBands::at(std::size_t band) const noexcept {
  Area area = _used;
  area.firstRow += static_cast<std::uint32_t>(band) * _height;
  area.endRow = std::min(_used.endRow, area.firstRow + _height);
  return area;
}

}  // namespace Zorv::Formulas
