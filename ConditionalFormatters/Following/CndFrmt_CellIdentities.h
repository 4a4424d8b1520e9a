#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "ConditionalFormatters/Following/CndFrmt_CellKeys.h"
#include "ConditionalFormatters/Following/CndFrmt_RowMoves.h"
#include "DOM/AxisIds.h"
#include "DOM/Table.h"

namespace Zorv::ConditionalFormatters {

/// A cell by the identity of its row, and its column: it stays the same while rows are edited.
using CellIdentity = std::uint64_t;

inline constexpr unsigned rowIdentityBits = 24;
inline constexpr unsigned cellIdentityBits = rowIdentityBits + columnKeyBits;

/// The identities of a sheet's cells, which follow edits of rows.
class CellIdentities {
public:
  [[nodiscard]] CellIdentity identityOf(PositionKey cell) const noexcept {
    return (CellIdentity{_rows.idAt(rowOfKey(cell))} << columnKeyBits) + columnOfKey(cell);
  }

  /// The position of a cell; none if its row was deleted.
  [[nodiscard]] std::optional<PositionKey> find(CellIdentity cell) const noexcept {
    unsigned long const id = cell >> columnKeyBits;
    unsigned long const row = _rows.beginOf(id);
    return _rows.idAt(row) == id ? std::optional(positionKeyOf(row, columnOfKey(cell)))
                                 : std::nullopt;
  }

  /// False after so many edits that identities run out, or that to follow further ones is slow.
  [[nodiscard]] bool canFollow(RowMoves const& moves) const noexcept {
    constexpr std::size_t mostEdits = 2'048;
    unsigned long given = _given;
    for (RowEdit const& edit : moves.getEdits()) {
      given += edit.count;
    }
    return given < (1UL << rowIdentityBits) && _editCount + moves.getEdits().size() <= mostEdits;
  }
  /// Requires that it can follow them.
  void follow(RowMoves const& moves) {
    for (RowEdit const& edit : moves.getEdits()) {
      follow(edit);
      _given += edit.count;
      ++_editCount;
    }
  }

private:
  void follow(RowEdit const& edit) {
    switch (edit.kind) {
      case RowEdit::Kind::Insert:
        _rows.insert(edit.first, edit.count);
        break;
      case RowEdit::Kind::Delete:
        _rows.remove(edit.first, edit.count);
        break;
      default:
        _rows.move(edit.first, edit.count, edit.before);
    }
  }

  DOM::AxisIds _rows{DOM::Table::rowCount};
  unsigned long _given = DOM::Table::rowCount;  ///< how many identities there are, at most
  std::size_t _editCount = 0;
};

}  // namespace Zorv::ConditionalFormatters
