#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "Utils/TableRange.h"

namespace Zorv::DOM {
class Table;
}  // namespace Zorv::DOM

// What a host tells a LiveResolver. Positions are those of the moment at which it is told: after
// all changes of the call. Tables are known by their address; none is null.
namespace Zorv::ConditionalFormatters {

/// Cells of which the value is new: entered, pasted, calculated again, made or removed.
struct ValuesChanged {
  DOM::Table const* table = nullptr;  ///< the table of the cells
  std::vector<TableRange> areas;      ///< in any order; they may overlap, and hold other cells, too
};

/// Rows or columns.
enum class Axis : std::uint8_t { Rows, Columns };

/// Edit of rows or columns.
enum class LineEdit : std::uint8_t { Insert, Delete, Move };

/// Rows or columns that were inserted, deleted or moved. Told once for each edit; the numbers are
/// those with which it was made, at the positions of its own time.
struct LinesChanged {
  DOM::Table const* table = nullptr;  ///< the table of the rows or columns
  Axis axis = Axis::Rows;             ///< rows or columns
  LineEdit edit = LineEdit::Insert;   ///< the edit
  /// The first line that was inserted, deleted or moved; a moved one where it was.
  unsigned long first = 0;
  unsigned long count = 0;  ///< how many rows or columns
  /// The line before which lines were moved, where it was; for moves alone.
  unsigned long before = 0;
};

/// A table's list of formats, their order, conditions or ranges; or named styles, which is told for
/// each table that uses them.
struct FormatsChanged {
  DOM::Table const* table = nullptr;  ///< the table of the formats
};

/// Anything else, or all of it: defined names, list objects, sheets, the locale, the time zone.
/// Always right, and as dear as a new resolver.
struct AnythingChanged {};

/// One change; see each alternative.
using Change = std::variant<ValuesChanged, LinesChanged, FormatsChanged, AnythingChanged>;

}  // namespace Zorv::ConditionalFormatters
