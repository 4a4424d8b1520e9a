#pragma once

#include <cstdint>
#include <optional>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_LineIdentities.h"
#include "ConditionalFormatters/Following/CndFrmt_SheetMoves.h"
#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {

/// A cell by the identities of its row and its column: it stays the same while these are edited.
using CellIdentity = std::uint64_t;

inline constexpr unsigned rowIdentityBits = 23;
inline constexpr unsigned columnIdentityBits = 15;
inline constexpr unsigned cellIdentityBits = rowIdentityBits + columnIdentityBits;

[[nodiscard]] constexpr unsigned long rowOfIdentity(CellIdentity cell) noexcept {
  return cell >> columnIdentityBits;
}
[[nodiscard]] constexpr unsigned long columnOfIdentity(CellIdentity cell) noexcept {
  return cell & ((CellIdentity{1} << columnIdentityBits) - 1);
}

/// The identities of a sheet's cells, which follow edits of rows and columns.
class CellIdentities {
public:
  [[nodiscard]] CellIdentity identityOf(PositionKey cell) const noexcept {
    return (CellIdentity{_rows.identityOf(rowOfKey(cell))} << columnIdentityBits) +
           _columns.identityOf(columnOfKey(cell));
  }

  /// The position of a cell; none if its row or its column was deleted.
  [[nodiscard]] std::optional<PositionKey> find(CellIdentity cell) {
    auto const row = _rows.find(rowOfIdentity(cell));
    auto const column = _columns.find(columnOfIdentity(cell));
    return row && column ? std::optional(positionKeyOf(*row, *column)) : std::nullopt;
  }

  /// False after very many edits; see LineIdentities.
  [[nodiscard]] bool canFollow(SheetMoves const& moves) const noexcept {
    return _rows.canFollow(moves.rows) && _columns.canFollow(moves.columns);
  }
  /// Requires that it can follow them.
  void follow(SheetMoves const& moves) {
    _rows.follow(moves.rows);
    _columns.follow(moves.columns);
  }

private:
  LineIdentities _rows{DOM::Table::rowCount, rowIdentityBits};
  LineIdentities _columns{DOM::Table::columnCount, columnIdentityBits};
};

}  // namespace Zorv::ConditionalFormatters
