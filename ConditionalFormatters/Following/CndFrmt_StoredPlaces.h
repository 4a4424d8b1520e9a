#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "ConditionalFormatters/Following/CndFrmt_CellIdentities.h"
#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_LineIdentities.h"
#include "ConditionalFormatters/Following/CndFrmt_LineMoves.h"
#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {

/// A place with the identity of its column instead of the column itself: the index of the range,
/// the row, the identity. Edits of columns leave it as it is.
using StoredPlace = std::uint64_t;

/// The range and the row of places, in one number.
using PlaceRow = std::uint64_t;

[[nodiscard]] constexpr PlaceRow rowOfPlace(PlaceKey place) noexcept {
  return place >> columnKeyBits;
}
[[nodiscard]] constexpr PlaceKey placeOfRow(PlaceRow row) noexcept { return row << columnKeyBits; }

[[nodiscard]] constexpr PlaceRow rowOfStored(StoredPlace place) noexcept {
  return place >> columnIdentityBits;
}
/// Before all others of the row.
[[nodiscard]] constexpr StoredPlace storedOfRow(PlaceRow row) noexcept {
  return row << columnIdentityBits;
}
[[nodiscard]] constexpr std::size_t rangeOfStored(StoredPlace place) noexcept {
  return rangeOfPlace(placeOfRow(rowOfStored(place)));
}

inline constexpr std::uint32_t storedColumnMask = (std::uint32_t{1} << columnIdentityBits) - 1;

/// Neighbouring columns with consecutive identities.
struct StoredColumns {
  std::uint32_t first;   ///< the identity
  std::uint32_t end;     ///< the identity after the last one
  unsigned long column;  ///< the first one

  [[nodiscard]] bool contains(std::uint32_t identity) const noexcept {
    return identity - first < end - first;
  }
  /// Requires that it contains the identity of the column.
  [[nodiscard]] PlaceKey placeOf(StoredPlace stored) const noexcept {
    auto const identity = static_cast<std::uint32_t>(stored) & storedColumnMask;
    return placeOfRow(rowOfStored(stored)) + column + (identity - first);
  }
};

/// Tells the stored place of a place, and the other way round, while columns are edited.
///
/// Costs: a question, a binary search in the runs of columns with consecutive identities; an edit,
/// a sort of them. At first there is one run, and an edit adds two or three.
class StoredPlaces {
public:
  /// Requires a column of the sheet.
  [[nodiscard]] StoredPlace store(PlaceKey place) const noexcept {
    return storedOfRow(rowOfPlace(place)) +
           _columns.identityOf(columnOfKey(positionOfPlace(place)));
  }
  /// Requires a column that is still there.
  [[nodiscard]] PlaceKey placeOf(StoredPlace stored) const noexcept {
    return findColumns(_runs, stored)->placeOf(stored);
  }

  /// The identities of some columns, ascending.
  [[nodiscard]] std::vector<StoredColumns> list(LineInterval const& columns) const;
  /// All columns, by ascending identities.
  [[nodiscard]] std::vector<StoredColumns> const& getRuns() const noexcept { return _runs; }
  /// The one among some columns, by ascending identities, that a stored place lies in, or null.
  [[nodiscard]] static StoredColumns const* findColumns(std::span<StoredColumns const> columns,
                                                        StoredPlace stored) noexcept;

  /// True if the identities ascend with the columns.
  [[nodiscard]] bool areInOrder() const noexcept { return _areInOrder; }

  /// Requires that LineIdentities can follow the edits.
  void follow(LineMoves const& moves);

private:
  LineIdentities _columns{DOM::Table::columnCount, columnIdentityBits};
  std::vector<StoredColumns> _runs{{0, DOM::Table::columnCount, 0}};
  bool _areInOrder = true;
};

}  // namespace Zorv::ConditionalFormatters
