#pragma once

#include <cstddef>
#include <cstdint>

#include <boost/container_hash/hash.hpp>

#include "DOM/Table.h"
#include "Formulas/Lookups/InlineList.h"
#include "Formulas/TableContext.h"
#include "Formulas/Values/Area.h"
#include "Utils/TableRange.h"

namespace Zorv::Formulas {

/// An area of a table itself. Unlike an Area it does not borrow a context, which may go with the
/// evaluation, and so it can be a key.
struct TableArea {
  DOM::Table const* table = nullptr;
  std::uint32_t firstRow = 0;
  std::uint32_t firstColumn = 0;
  std::uint32_t endRow = 0;
  std::uint32_t endColumn = 0;

  TableArea() = default;
  explicit TableArea(Area const& area)
      : table(&area.table->getTable()),
        firstRow(area.firstRow),
        firstColumn(area.firstColumn),
        endRow(area.endRow),
        endColumn(area.endColumn) {}

  [[nodiscard]] TableRange toTableRange() const noexcept {
    return {firstRow, firstColumn, endRow, endColumn};
  }

  friend bool operator==(TableArea const&, TableArea const&) noexcept = default;
  friend std::size_t hash_value(TableArea const& area) noexcept {
    std::size_t seed = boost::hash<DOM::Table const*>()(area.table);
    boost::hash_combine(seed, (std::uint64_t{area.firstRow} << 32U) | area.endRow);
    boost::hash_combine(seed, (std::uint64_t{area.firstColumn} << 32U) | area.endColumn);
    return seed;
  }
};

using TableAreas = InlineList<TableArea>;

/// The area whose classes of equal values serve an area: of a part of a column the whole column, so
/// that ranges which grow or move along it need one index only. `AnyArea`: an Area or a TableArea.
template <class AnyArea>
[[nodiscard]] AnyArea indexedArea(AnyArea area) noexcept {
  if (area.endColumn - area.firstColumn == 1) {
    area.firstRow = 0;
    area.endRow = static_cast<std::uint32_t>(DOM::Table::rowCount);
  }
  return area;
}

}  // namespace Zorv::Formulas
