#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include <boost/container_hash/hash.hpp>

#include "DOM/Table.h"
#include "Formulas/Evaluation/Area.h"
#include "Formulas/Lookups/Few.h"
#include "Formulas/TableContext.h"

namespace Zorv::Formulas {

/// An area, told by the table itself and not by a view of it that goes with the evaluation.
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

  /// A number that stands among areas: it has no table.
  [[nodiscard]] static TableArea ofNumber(double number) noexcept {
    constexpr unsigned halfBits = 32;
    auto const bits = std::bit_cast<std::uint64_t>(number);
    TableArea area;
    area.firstRow = static_cast<std::uint32_t>(bits >> halfBits);
    area.endRow = static_cast<std::uint32_t>(bits);
    return area;
  }

  friend bool operator==(TableArea const&, TableArea const&) noexcept = default;
  friend std::size_t hash_value(TableArea const& area) noexcept {
    std::size_t seed = boost::hash<DOM::Table const*>()(area.table);
    boost::hash_combine(seed, (std::uint64_t{area.firstRow} << 32U) | area.endRow);
    boost::hash_combine(seed, (std::uint64_t{area.firstColumn} << 32U) | area.endColumn);
    return seed;
  }
};

/// What an index over cells is asked for.
enum class LookupKind : std::uint8_t {
  CriterionClasses,  ///< cells equal as criteria see them: a text that reads as a number is one
  ValueClasses,      ///< cells equal as searches see them: only within one kind of value
  TupleClasses,      ///< places where several areas hold equal values, as criteria see them
  Order,             ///< values in their order
  Totals,            ///< what is gathered from the last area, by the classes of the others
  CallResult,        ///< what a function gives for areas and numbers
};

/// Names an index: its kind and the areas that it is made of.
struct LookupKey {
  LookupKind kind = LookupKind::Order;
  std::uint16_t function = 0;  ///< of a CallResult, its number in the table of functions
  Few<TableArea> areas;

  LookupKey() = default;
  LookupKey(LookupKind itsKind, Few<TableArea> const& itsAreas) noexcept
      : kind(itsKind), areas(itsAreas) {}
  LookupKey(LookupKind itsKind, Area const& area) : kind(itsKind) {
    areas.push_back(TableArea(area));
  }

  friend bool operator==(LookupKey const& a, LookupKey const& b) noexcept = default;
  friend std::size_t hash_value(LookupKey const& key) noexcept {
    std::size_t seed = static_cast<std::size_t>(key.kind) << 16U | key.function;
    for (TableArea const& area : key.areas) {
      boost::hash_combine(seed, hash_value(area));
    }
    return seed;
  }
};

}  // namespace Zorv::Formulas
